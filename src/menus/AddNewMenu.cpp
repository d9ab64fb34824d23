#include "menus/AddNewMenu.h"

#include "core/NumberText.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "media/mAVIDecs.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"

namespace mw {

namespace {

DocNode& AddTrack(Document& doc, DocNode& tracks, const std::string& kind, const std::string& sourceID,
                  const std::string& trackID)
{
    DocNode& track = AddObjectNode(doc.Tree, tracks, TakeObjectID(doc), "MediaTrack", kind);
    AddPropRow(doc.Tree, track, "mediaSourceID", sourceID);
    AddPropRow(doc.Tree, track, "sourceTrackID", "none");
    AddPropRow(doc.Tree, track, "trackID", trackID);
    return track;
}

} // namespace

std::string AddNewMenu(Project& project, NewMenuForm& form, bool showDialog)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    if (showDialog) {
        FillLanguageCombo(form, tree);
        Combo2_Click(form, tree);
        if (!project.Forms().ShowNewMenu(form))
            return "";
    }

    // A menu that shares another's video gets a track of its own on that menu's source.
    std::string sharedSource;
    if (form.lblVideo.starts_with("<Menu")) {
        const std::string other = MenuIdOfRow(form.lblVideo);
        const DocNode* menu = tree.ObjectNode(other);
        const DocNode* track = menu ? tree.ObjectNode(GetPropertyInNode(*menu, "backgroundvideoid")) : nullptr;
        const DocNode* source = track ? tree.ObjectNode(GetPropertyInNode(*track, "mediasourceid")) : nullptr;
        if (!source) {
            GetFileNameForMenu(project, other); // says which link is missing
            return "";
        }
        sharedSource = GetPropertyInNode(*source, "objectid");
        form.lblVideo = ResolveLocation(doc.ProjectFile, GetPropertyInNode(*source, "location"));
    }
    const bool withExit = form.Combo3.ListIndex > 0;

    project.MarkDirty();
    std::string code = ComboText(form.Combo2);
    if (code == kNewLanguageRow)
        code = project.Values().defLang;
    DocNode* language = IsLanguageMenusThere(tree, code);
    if (!language)
        language = &CreateLanguageMenusNode(doc, code);
    const bool firstMenu = LoadAllMenus(tree, Lower(code)).empty();
    DocNode& tracks = GetMenuTracksOrCreate(doc);

    const std::string type = ComboText(form.Combo1);
    const std::string& name = form.txtMenuName;
    const std::string file = form.lblVideo;
    const std::string startFrame = std::to_string(LeadingNumber(form.txtStartFrame));
    const std::string endFrame = std::to_string(LeadingNumber(form.txtEndFrame));

    const std::string title = MenuCommentText(name, type);
    DocNode& comment = tree.AddChild(*language, "", title, "comment");
    comment.Tag = title;

    const long menuNumber = TakeObjectID(doc);
    const std::string menuID = std::to_string(menuNumber);
    DocNode& menu = AddObjectNode(tree, *language, menuNumber, "DivXMediaMenu", "menu");
    const Settings& settings = project.Values();
    ExtraInfoElement menuInfo("");
    menuInfo.Set("Color1", std::to_string(settings.defOverlayColor1));
    menuInfo.Set("Color2", std::to_string(settings.defOverlayColor2));
    menuInfo.Set("Color3", std::to_string(settings.defOverlayColor3));
    menuInfo.Set("frame", startFrame);
    menu.Tag = menuInfo.Text();

    std::string sourceID = sharedSource;
    if (sourceID.empty()) {
        const long sourceNumber = TakeObjectID(doc);
        sourceID = std::to_string(sourceNumber);
        DocNode& source = AddObjectNode(tree, tracks, sourceNumber, "MediaSource", "movielink");
        AddPropRow(tree, source, "mediaType", "menuAvi");
        AddPropRow(tree, source, "location", file);
    }

    long start = 0, length = 0, width = 0, height = 0;
    float fps = 0;
    const int videoStream = GetStreamByType(file, "video", start, length, fps, width, height, project.Ask());
    const std::string videoTrackID = PadZeros(videoStream < 0 ? 0 : videoStream, 2) + "dc";
    DocNode& video = AddTrack(doc, tracks, "movielink", sourceID, videoTrackID);
    AddPropRow(tree, video, "startFrame", startFrame);
    AddPropRow(tree, video, "endFrame", endFrame);
    AddPropRow(tree, video, "type", "video");
    ExtraInfoElement videoInfo("");
    videoInfo.Set("Buttons", "0");
    videoInfo.Set("menuID", menuID);
    video.Tag = videoInfo.Text();
    const std::string videoID = GetPropertyInNode(video, "objectid");
    const std::string fileName = LocationFileName(file);
    doc.MenuTracks.Add(videoID, MenuTrackText(videoID, sourceID, fileName, "video", videoTrackID));
    AddPropRow(tree, menu, "backgroundVideoID", videoID);

    const int audioStream = GetStreamByType(file, "audio", start, length, fps, width, height, project.Ask());
    if (audioStream >= 0) {
        const std::string audioTrackID = PadZeros(audioStream, 2) + "wb";
        DocNode& audio = AddTrack(doc, tracks, "audiolink", sourceID, audioTrackID);
        AddPropRow(tree, audio, "type", "audio");
        const std::string audioID = GetPropertyInNode(audio, "objectid");
        doc.MenuTracks.Add(audioID, MenuTrackText(audioID, sourceID, fileName, "video", audioTrackID));
        AddPropRow(tree, menu, "backgroundAudioID", audioID);
    } else {
        AddPropRow(tree, menu, "backgroundAudioID", "none");
    }
    AddPropRow(tree, menu, "menuType", type);
    AddPropRow(tree, menu, "menuName", name);

    if (withExit) {
        const long actionNumber = TakeObjectID(doc);
        AddPropRow(tree, menu, "exitAction", std::to_string(actionNumber));
        DocNode& action = AddObjectNode(tree, menu, actionNumber, "Action", "action");
        DocNode& transition = AddObjectNode(tree, action, TakeObjectID(doc), "MenuTransitionAction", "action");
        const std::string target = form.Combo3.ListIndex == 1 ? menuID : MenuIdOfRow(ComboText(form.Combo3));
        AddPropRow(tree, transition, "menuID", target);
    }

    if (firstMenu)
        UpdatePropertyInNode(tree, *language, "startingMenuID", menuID, true);
    return menuID;
}

} // namespace mw
