#include "build/ProjectCopy.h"

#include "build/MuxScripts.h"
#include "build/PicturesToMenuVideo.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/TreeQueries.h"
#include "document/TreeViewToXml.h"

#include <vector>

namespace mw {

namespace fs = std::filesystem;

namespace {

// Puts back the text of every row and the Tag of every node changed meanwhile (the writer pads
// Tags), on every way out.
class TreeRestorer {
public:
    explicit TreeRestorer(const DocTree& tree)
    {
        tree.ForEach([this](DocNode& node) { saved_.push_back({&node, node.Text, node.Tag}); });
    }
    ~TreeRestorer()
    {
        for (const Saved& s : saved_) {
            s.Node->Text = s.Text;
            s.Node->Tag = s.Tag;
        }
    }
    TreeRestorer(const TreeRestorer&) = delete;
    TreeRestorer& operator=(const TreeRestorer&) = delete;

private:
    struct Saved {
        DocNode* Node;
        std::string Text;
        std::string Tag;
    };
    std::vector<Saved> saved_;
};

} // namespace

bool ReplaceAviNamesForOverlaysSaveAndReverse(Document& doc, const fs::path& programFolder, double fps,
                                              const Settings& settings, const LangDoc& lang, Prompt& prompt,
                                              MenuVideoTools* tools)
{
    if (doc.Tree.Empty())
        return true;
    const fs::path tmp = BuildFolder(programFolder);
    const TreeRestorer restore(doc.Tree);

    // The menus' sources point at what the overlay script makes of them.
    if (const DocNode* tracks = MenuTracksOf(doc)) {
        for (const auto& source : *tracks) {
            if (source->Text != "MediaSource")
                continue;
            const std::string location = GetPropertyInNode(*source, "location");
            if (location.empty())
                continue;
            const std::string id = GetPropertyInNode(*source, "objectid");
            const std::string stem = id + "_" + LocationFileName(location);
            if (IsPictureMenu(location))
                CreateAviFromaPic(ResolveLocation(doc.ProjectFile, location), (tmp / (stem + ".avi")).string(), fps, "",
                                  settings.MethodForPicToMenu, settings, lang, prompt, tools);
            UpdatePropertyInNode(doc.Tree, *source, "location", ToToolPath((tmp / (stem + ".divx")).string()), false);
        }
    }
    // Every other file as the muxer under Wine finds it.
    doc.Tree.ForEach([&doc](DocNode& row) {
        if (!row.HasChildren() && RowMatches(row, "location") && EqualsNoCase(RowName(row.Text), "location")) {
            const std::string value = RowValue(row.Text);
            if (!value.empty())
                row.Text = "location = " + ToToolPath(ResolveLocation(doc.ProjectFile, value));
        }
    });

    std::string error;
    const fs::path copy = tmp / fs::path(doc.ProjectFile).filename();
    if (SaveTreeToFile(doc.Tree, copy.string(), error))
        return true;
    prompt.Message(copy.string() + ": " + error, {}, PromptIcon::Critical);
    return false;
}

} // namespace mw
