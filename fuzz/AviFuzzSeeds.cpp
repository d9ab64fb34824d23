// Writes a few small AVI files into a folder, as a seed corpus for avi_file_fuzz: one for each
// index kind, with names, JUNK, empty chunks and a RIFF AVIX extension among them.

#include "media/AviBytes.h"

#include <filesystem>
#include <fstream>
#include <iostream>

using namespace mw::test;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: avi_fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
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
    return 0;
}
