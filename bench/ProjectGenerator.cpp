#include "ProjectGenerator.h"

#include <fstream>
#include <sstream>
#include <vector>

namespace mw::bench {

namespace {

// Hands out identifiers in document order, so the project is already normalised apart from
// the forward references, which normalising has to renumber anyway.
struct Ids {
    long next = 1;
    long Take() { return next++; }
};

void Touch(const std::filesystem::path& file) { std::ofstream(file, std::ios::binary); }

} // namespace

std::filesystem::path WriteGeneratedProject(const std::filesystem::path& folder, const ProjectShape& shape)
{
    std::filesystem::create_directories(folder);
    Ids ids;
    std::ostringstream media;
    std::ostringstream table;
    std::ostringstream menus;
    std::ostringstream menuTracks;

    const long root = ids.Take();
    const long tableId = ids.Take();
    const long mediaId = ids.Take();

    std::vector<long> titleIds;
    std::vector<long> firstChapterIds;
    for (int t = 0; t < shape.Titles; ++t) {
        const std::string movie = "movie" + std::to_string(t) + ".avi";
        Touch(folder / movie);
        const long lookup = ids.Take();
        const long trans = ids.Take();
        table << "<TranslationLookup objectID=\"" << lookup << "\"><Translation objectID=\"" << trans
              << "\" languageCode=\"en\" value=\"Title " << t << "\"/></TranslationLookup>\n";
        const long title = ids.Take();
        const long source = ids.Take();
        titleIds.push_back(title);
        media << "<Title objectID=\"" << title << "\" translationLookupID=\"" << lookup
              << "\" defaultAudioTrack=\"01wb\" defaultSubtitleTrack=\"none\">\n"
              << "<MediaSource objectID=\"" << source << "\" mediaType=\"featureAvi\" location=\"" << movie
              << "\"/>\n"
              << "<MediaTrack objectID=\"" << ids.Take() << "\" mediaSourceID=\"" << source
              << "\" trackID=\"00dc\" startFrame=\"0\" endFrame=\"89999\" type=\"video\"/>\n";
        const long audioLookup = ids.Take();
        const long audioTrans = ids.Take();
        table << "<TranslationLookup objectID=\"" << audioLookup << "\"><Translation objectID=\"" << audioTrans
              << "\" languageCode=\"en\" value=\"Audio - en-US;02\"/></TranslationLookup>\n";
        media << "<MediaTrack objectID=\"" << ids.Take() << "\" mediaSourceID=\"" << source
              << "\" trackID=\"01wb\" languageCode=\"en\" strn=\"Audio - en-US;02\" translationLookupID=\""
              << audioLookup << "\" type=\"audio\"/>\n";
        for (int c = 0; c < shape.ChaptersPerTitle; ++c) {
            const long chapterLookup = ids.Take();
            const long chapterTrans = ids.Take();
            table << "<TranslationLookup objectID=\"" << chapterLookup << "\"><Translation objectID=\""
                  << chapterTrans << "\" languageCode=\"en\" value=\"Chapter " << c + 1
                  << "\"/></TranslationLookup>\n";
            const long chapter = ids.Take();
            if (c == 0)
                firstChapterIds.push_back(chapter);
            media << "<Chapter objectID=\"" << chapter << "\" translationLookupID=\"" << chapterLookup
                  << "\" startFrame=\"" << c * 9000 << "\" endFrame=\"" << c * 9000 + 8999 << "\"/>\n";
        }
        media << "</Title>\n";
    }

    const long menuTracksId = ids.Take();
    const long languageMenus = ids.Take();
    const long firstMenu = ids.next;
    for (int m = 0; m < shape.Menus; ++m) {
        const std::string movie = "menu" + std::to_string(m) + ".avi";
        Touch(folder / movie);
        const long menu = ids.Take();
        const long source = ids.Take();
        const long video = ids.Take();
        const long exitAction = ids.Take();
        const long transition = ids.Take();
        const long firstButton = ids.next;
        const long nextMenu = m + 1 < shape.Menus ? menu + 5 + 6L * shape.ButtonsPerMenu : firstMenu;
        menuTracks << "<MediaSource objectID=\"" << source << "\" mediaType=\"menuAvi\" location=\"" << movie
                   << "\"/>\n"
                   << "<MediaTrack objectID=\"" << video << "\" mediaSourceID=\"" << source
                   << "\" trackID=\"00dc\" startFrame=\"0\" endFrame=\"124\" type=\"video\">"
                   << "<!-- <Menuwright Buttons='" << shape.ButtonsPerMenu << "' menuID='" << menu
                   << "'/> --></MediaTrack>\n";
        std::ostringstream buttons;
        for (int b = 0; b < shape.ButtonsPerMenu; ++b) {
            const long button = ids.Take();
            const long rect = ids.Take();
            const long select = ids.Take();
            const long play = ids.Take();
            const long overlay = ids.Take();
            ids.Take(); // the gap an earlier deletion left: normalising closes it
            const auto neighbour = [&](int offset) {
                const int other = (b + offset + shape.ButtonsPerMenu) % shape.ButtonsPerMenu;
                return firstButton + 6L * other;
            };
            const int title = (m * shape.ButtonsPerMenu + b) % shape.Titles;
            buttons << "<ButtonMenu objectID=\"" << button << "\" overlayID=\"" << overlay << "\" upAction=\""
                    << neighbour(-1) << "\" downAction=\"" << neighbour(1) << "\" leftAction=\"none\""
                    << " rightAction=\"none\" selectAction=\"" << select << "\">"
                    << "<!-- <Menuwright Shape='*Rect' width='3' Position='10 10 80 30'/> -->\n"
                    << "<MenuRectangle objectID=\"" << rect << "\" left=\"" << 40 + b * 100
                    << "\" top=\"400\" width=\"90\" height=\"40\"/>\n"
                    << "<Action objectID=\"" << select << "\"><PlayAction objectID=\"" << play
                    << "\" titleID=\"" << titleIds[static_cast<std::size_t>(title)] << "\" mediaObjectID=\""
                    << firstChapterIds[static_cast<std::size_t>(title)] << "\"/></Action>\n"
                    << "</ButtonMenu>\n";
            menuTracks << "<MediaTrack objectID=\"" << overlay << "\" mediaSourceID=\"" << source
                       << "\" sourceTrackID=\"none\" trackID=\"0" << b + 1 << "sb\" startFrame=\"0\""
                       << " endFrame=\"124\" type=\"subtitle\"><!-- <Menuwright rectID='" << rect
                       << "'/> --></MediaTrack>\n";
        }
        menus << "<DivXMediaMenu objectID=\"" << menu << "\" backgroundVideoID=\"" << video
              << "\" backgroundAudioID=\"none\" startingMenuItemID=\"" << firstButton << "\" exitAction=\""
              << exitAction << "\" menuType=\"other\" menuName=\"Menu " << m << "\">"
              << "<!-- <Menuwright Color1='255' Color2='65535' Color3='16777215' frame='0'/> -->\n"
              << "<!-- a designer's note, not extra info -->\n"
              << "<Action objectID=\"" << exitAction << "\"><MenuTransitionAction objectID=\"" << transition
              << "\" menuID=\"" << nextMenu << "\"/></Action>\n"
              << buttons.str() << "</DivXMediaMenu>\n";
    }

    std::ostringstream xml;
    xml << "<DivXMediaManager menuVersion=\"1\" objectID=\"" << root
        << "\" defaultMenuLanguage=\"en\" version=\"1.0\" startingMenuID=\"" << firstMenu << "\">\n"
        << "<TranslationTable objectID=\"" << tableId << "\">\n"
        << table.str() << "</TranslationTable>\n"
        << "<Media objectID=\"" << mediaId << "\">\n"
        << media.str() << "<MenuTracks objectID=\"" << menuTracksId << "\">\n"
        << menuTracks.str() << "</MenuTracks>\n</Media>\n"
        << "<LanguageMenus objectID=\"" << languageMenus << "\" languageCode=\"en\" startingMenuID=\""
        << firstMenu << "\" rootMenuID=\"" << firstMenu << "\">\n"
        << menus.str() << "</LanguageMenus>\n</DivXMediaManager>\n";

    const auto path = folder / "project.xml";
    std::ofstream(path, std::ios::binary) << xml.str();
    return path;
}

} // namespace mw::bench
