// Writes the seed corpora of the fuzz targets into FOLDER/avi, FOLDER/bmp and FOLDER/project:
// small AVI files of every index kind (names, JUNK, empty chunks and a RIFF AVIX among them),
// bitmaps of the four depths, and projects with menus, references and extra info.

#include "media/AviBytes.h"
#include "render/BmpFile.h"
#include "render/cDIB.h"

#include <filesystem>
#include <fstream>
#include <iostream>

using namespace mw::test;

namespace {

void WriteAviSeeds(const std::filesystem::path& folder)
{
    const struct {
        const char* Name;
        AviIndexKind Index;
        std::size_t FramesPerRiff;
        std::size_t RecDepth;
    } seeds[] = {
        {"idx1.avi", AviIndexKind::Idx1, 100, 0},
        {"idx1-absolute.avi", AviIndexKind::Idx1Absolute, 100, 0},
        {"opendml.avi", AviIndexKind::OpenDml, 4, 0},
        {"opendml-idx1.avi", AviIndexKind::OpenDmlAndIdx1, 5, 0},
        {"no-index-rec.avi", AviIndexKind::None, 100, 1},
    };
    for (const auto& seed : seeds) {
        AviSpec spec;
        spec.Index = seed.Index;
        spec.FramesPerRiff = seed.FramesPerRiff;
        spec.RecDepth = seed.RecDepth;
        spec.Streams.push_back(VideoStream(12, 5));
        spec.Streams[0].Chunks[3].Size = 0;
        spec.Streams[0].Name = "Video";
        spec.Streams[0].JunkAfterName = 24;
        spec.Streams[0].Start = 2;
        AviStreamSpec audio = VideoStream(9, 1);
        audio.Type = "auds";
        audio.Suffix = "wb";
        audio.Format.assign(18, 0);
        spec.Streams.push_back(audio);
        AviStreamSpec subtitle = VideoStream(2, 1);
        subtitle.Scale = 0;
        subtitle.Rate = 0;
        subtitle.Suffix = "sb";
        subtitle.Name = "Subtitle";
        spec.Streams.push_back(subtitle);
        std::ofstream(folder / seed.Name, std::ios::binary) << BuildAvi(spec).Bytes;
    }
}

void WriteBmpSeeds(const std::filesystem::path& folder)
{
    for (const int bpp : {1, 4, 8, 24}) {
        mw::cDIB dib;
        if (!dib.Create(5, 3, bpp))
            continue;
        for (int x = 0; x < 5; ++x)
            dib.SetPixel(x, x % 3, bpp == 24 ? 0x123456u * static_cast<unsigned>(x) : static_cast<unsigned>(x) % 2);
        std::ofstream(folder / ("depth" + std::to_string(bpp) + ".bmp"), std::ios::binary) << mw::BmpFileBytes(dib);
    }
}

void WriteProjectSeeds(const std::filesystem::path& folder)
{
    std::ofstream(folder / "menus.xml", std::ios::binary)
        << "<DivXMediaManager menuVersion=\"1\" objectID=\"1\" defaultMenuLanguage=\"en\" version=\"1.0\">\r\n"
           "<TranslationTable objectID=\"3\"><TranslationLookup objectID=\"4\"><Translation objectID=\"5\" "
           "languageCode=\"en\" value=\"Main\"/></TranslationLookup></TranslationTable>\r\n"
           "<Media objectID=\"2\"><Title objectID=\"6\" nameID=\"4\">\r\n"
           "<MediaSource objectID=\"7\" mediaType=\"featureAvi\" location=\"movie.avi\"/>\r\n"
           "<MediaTrack objectID=\"8\" mediaSourceID=\"7\" trackID=\"00dc\" startFrame=\"0\" endFrame=\"99\" "
           "type=\"video\"/>\r\n"
           "<Chapter objectID=\"10\" startFrame=\"0\" endFrame=\"49\" nameID=\"4\"/></Title>\r\n"
           "<MenuTracks objectID=\"20\"><MediaSource objectID=\"21\" mediaType=\"menuAvi\" location=\"menu.avi\"/>"
           "<MediaTrack objectID=\"22\" mediaSourceID=\"21\" trackID=\"00dc\" startFrame=\"0\" endFrame=\"10\" "
           "type=\"video\"/></MenuTracks></Media>\r\n"
           "<LanguageMenus objectID=\"9\" languageCode=\"en\" startingMenuID=\"12\" rootMenuID=\"none\">\r\n"
           "<!-- rectID='3' menuID='12' -->\r\n"
           "<DivXMediaMenu objectID=\"12\" backgroundVideoID=\"22\" backgroundAudioID=\"none\" menuType=\"title\" "
           "menuName=\"Main\"><MenuButton objectID=\"13\" left=\"10\" top=\"10\" right=\"90\" bottom=\"40\" "
           "selectedButtonID=\"13\"><Action objectID=\"14\" actionType=\"playTitle\" mediaObjectID=\"6\" "
           "menuID=\"99\"/></MenuButton></DivXMediaMenu>\r\n"
           "</LanguageMenus>\r\n"
           "<LanguageMenus objectID=\"30\" languageCode=\"de\" startingMenuID=\"none\" rootMenuID=\"none\"/>\r\n"
           "</DivXMediaManager>\r\n";
    std::ofstream(folder / "empty.xml", std::ios::binary) << "<DivXMediaManager objectID=\"1\"/>";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    for (const char* kind : {"avi", "bmp", "project"})
        std::filesystem::create_directories(folder / kind);
    WriteAviSeeds(folder / "avi");
    WriteBmpSeeds(folder / "bmp");
    WriteProjectSeeds(folder / "project");
    return 0;
}
