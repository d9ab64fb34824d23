#include "generators/PageMenus.h"

#include "build/BuiltInMenuVideo.h"
#include "build/OutsideMenuVideo.h"
#include "build/PicturesToMenuVideo.h"
#include "core/NumberText.h"
#include "core/Text.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "generators/GeneratorRun.h"
#include "generators/Navigation.h"
#include "generators/MotionThumbnails.h"
#include "generators/PageComposer.h"
#include "generators/PageSettings.h"
#include "media/FrameGrabber.h"
#include "menus/Actions.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"
#include "render/cDIB.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

// The buttons of one page, by their place in the navigation.
struct PageButtons {
    std::map<NavButton, std::string> IDs;
    std::string Previous;
    std::string Next;
    std::string Main;
    std::string Setup;
};

void WireNavigation(Project& project, const MenuPage& page, const PageButtons& buttons)
{
    const NavPage nav{.Page = page.Page, .HasMain = !buttons.Main.empty(), .HasSetup = !buttons.Setup.empty()};
    DocTree& tree = project.Doc.Tree;
    for (const auto& [button, links] : NavigationRule(static_cast<int>(page.Items.size()), page.PerPage, nav)) {
        DocNode* node = tree.ObjectNode(buttons.IDs.at(button));
        if (!node)
            continue;
        const auto set = [&](const char* key, const std::optional<NavButton>& to) {
            if (to)
                UpdatePropertyInNode(tree, *node, key, buttons.IDs.at(*to), true);
        };
        set("leftAction", links.Left);
        set("rightAction", links.Right);
        set("downAction", links.Down);
    }
}

// Makes the video of the current page by the method the run follows.
struct PageVideoMaker {
    Project& Owner;
    MenuPage& Page;
    const PageMenuJob& Job;
    PageArt Art;
    double Fps;

    MenuVideoTools* Tools() const { return Job.Request.Tools; }
    int Method() const { return PicToMenuMethod(Owner, Tools()); }
    bool Cancelled() const { return Tools() && Tools()->Runner.Cancelled(); }

    bool Still(const std::string& output) const
    {
        Owner.Ask().Progress(kPageMessage, Job.CreatingMessage + std::to_string(Page.Page));
        return MakeStillVideo(Owner, ComposePage(Page, Art), (Job.PictureFolder / "picformenu.bmp").string(), output,
                              Fps, Page.Design.UseThisSound, Tools());
    }

    // Frame k shows each visible thumbnail's frame plus k on the page composed once. The built-in
    // encoder takes the frames as they are made; the outside tools read them from bitmaps.
    bool Motion(long frames, const std::string& output) const
    {
        Prompt& prompt = Owner.Ask();
        std::vector<QImage> shown;
        for (const PageItem& item : Page.Items)
            shown.push_back(item.Picture);
        MotionThumbnails thumbnails;
        const QImage still = ComposePage(Page, Art).convertToFormat(QImage::Format_RGB32);
        const auto compose = [&](long k, cDIB& frame) {
            if (Cancelled())
                return false;
            prompt.Progress(kPageMessage, Job.MotionMessage + std::to_string(Page.Page) + "... " + std::to_string(k) +
                                              "/" + std::to_string(frames - 1));
            if (!thumbnails.Show(Page, k, prompt))
                return false;
            QImage image = still;
            for (const PageItem& item : Page.Items) {
                if (item.Visible)
                    LayThumbnail(image, Page, item, Art);
            }
            return frame.CreateFromImage(image);
        };
        std::error_code ec;
        bool made = thumbnails.Open(Page, Job.Movies, prompt);
        if (made && Method() == kPicToMenuBuiltIn) {
            fs::remove(output, ec);
            made = BuiltInAviFromFrames(
                frames, [&](long k, cDIB& frame, std::string&) { return compose(k, frame); }, output, Fps,
                Page.Design.UseThisSound, Owner.Values(), Owner.Lang(), prompt);
        } else if (made) {
            std::vector<std::string> pictures;
            for (long k = 0; k < frames && made; ++k) {
                pictures.push_back(
                    (Job.PictureFolder / ("picformenu" + std::to_string(k) + "_" + std::to_string(Page.Page) + ".bmp"))
                        .string());
                cDIB frame;
                made = compose(k, frame) && frame.Save(pictures.back());
            }
            made = made && CreateAviFromPics(pictures, output, Fps, Page.Design.UseThisSound, Method(), Owner.Values(),
                                             Owner.Lang(), prompt, Tools());
            for (const std::string& picture : pictures)
                fs::remove(picture, ec);
        }
        for (std::size_t i = 0; i < shown.size(); ++i)
            Page.Items[i].Picture = shown[i];
        return made;
    }
};

} // namespace

std::string PageFileName(const std::string& fileName, int page)
{
    if (page <= 1)
        return fileName;
    return fileName.substr(0, fileName.size() - std::min<std::size_t>(4, fileName.size())) + "_" +
           std::to_string(page) + ".avi";
}

long MotionFrameCount(double seconds, double fps)
{
    if (seconds <= 0 || fps <= 0)
        return 0;
    return static_cast<long>(RoundHalfEven(RoundHalfEven(seconds) * fps));
}

ActionChoice PlayChoice(const std::string& titleID, const std::string& chapterID)
{
    ActionChoice play;
    play.Type = "PlayAction";
    play.TitleID = titleID;
    play.ChapterID = chapterID;
    return play;
}

void LoadItemPictures(Project& project, MenuPage& page, const std::vector<std::string>& movies)
{
    project.Ask().Progress(kPageMessage, "Loading frames... Please wait");
    for (std::size_t i = 0; i < page.Items.size() && i < movies.size(); ++i) {
        cDIB frame;
        if (GrabFrameToPicture(movies[i], frame, page.Items[i].Frame, true, project.Ask(), project.Lang()))
            page.Items[i].Picture = frame.ToImage();
    }
    PlacePictures(page, true);
    project.Ask().Progress(kPageMessage, "");
}

void FitPageToItems(Project& project, const std::string& menuName, MenuPage& page)
{
    // A page side is a multiple of 4 and at least 100.
    const auto side = [](int movie, int fallback) {
        return movie >= kMinPageSide ? movie - movie % 4 : fallback;
    };
    const QImage& first = page.Items.front().Picture;
    page.Width = side(first.width(), page.Width);
    page.Height = side(first.height(), page.Height);
    // Thumbnails keep the proportion that 120 x 90 has on a page of 720 x 576.
    page.ItemWidth = static_cast<float>(page.Width / 6);
    page.ItemHeight = static_cast<float>(page.Height * 90 / 576);
    page.Design = LoadDefValues(page.Kind, SettingsFilePath(project.ProgramFolder()), project.ProgramFolder(), menuName,
                                page.Width, page.Height);
    PlacePictures(page, true);
}

bool CreatePageMenus(Project& project, MenuPage& page, const PageMenuJob& job, PageMenuResult& result)
{
    result = {};
    Prompt& prompt = project.Ask();
    if (page.Items.empty() || job.Plays.size() != page.Items.size())
        return false;
    const fs::path tmp = project.ProgramFolder() / "tmp";
    std::error_code ec;
    fs::create_directories(tmp, ec);
    fs::create_directories(job.PictureFolder, ec);
    const std::optional<std::string> asked = MenuFileName(prompt, job.Request.FileName, MenuFileFilter(page.Kind));
    if (!asked)
        return false;
    const std::string& fileName = *asked;
    const int pages = PageCount(static_cast<int>(page.Items.size()), page.PerPage);
    const int shownPage = page.Page;

    NewMenuForm form;
    if (!OpenNewMenuForm(project, form, job.Request.Language)) {
        prompt.Message("The project has no language set " + job.Request.Language, "", PromptIcon::Critical);
        return false;
    }
    const double fps = std::strtod(form.cmbfpsText.c_str(), nullptr);
    // Motion pages run at the movie's rate, so that the thumbnails play at their own speed.
    const long motionFrames = MotionFrameCount(job.Request.MotionSeconds, project.MovieFps);
    const PageVideoMaker maker{project, page, job, LoadPageArt(page), motionFrames > 0 ? project.MovieFps : fps};

    prompt.Progress(kPageMessage, "Creating picture...");
    std::vector<PageVideo> videos;
    for (int p = 1; p <= pages; ++p) {
        page.Page = p;
        PlacePictures(page, false);
        videos.push_back({(tmp / (job.WorkName + std::to_string(p) + ".avi")).string(), PageFileName(fileName, p)});
        const std::string& work = videos.back().Work;
        const bool made = !maker.Cancelled() && (motionFrames > 0 ? maker.Motion(motionFrames, work) : maker.Still(work));
        if (!made) {
            RemoveFiles(videos);
            page.Page = shownPage;
            PlacePictures(page, false);
            return false;
        }
    }
    const bool placed = PutAllInPlace(videos);
    RemoveFiles(videos);
    if (!placed) {
        prompt.Message("There was an error working with the file:\n" + fileName, "", PromptIcon::Critical);
        page.Page = shownPage;
        PlacePictures(page, false);
        return false;
    }

    LanguageSetGuard guard(project, IsLanguageMenusThere(project.Doc.Tree, ComboText(form.Combo2)));
    std::vector<PageButtons> pageButtons;
    const ButtonOverlay overlay = ChooseOverlay(project, page.Design);
    for (int p = 1; p <= pages; ++p) {
        page.Page = p;
        PlacePictures(page, false);
        prompt.Progress(kPageMessage, "Adding menu...");
        const std::string menuID =
            AddPageMenu(project, videos[static_cast<std::size_t>(p - 1)].Final, page.Design.MenuName + std::to_string(p),
                        job.Request.Language);
        if (menuID.empty())
            return false;
        result.MenuIDs.push_back(menuID);
        prompt.Progress(kPageMessage, "Setting menu properties...");
        ParceMenu(project, project.Doc.Tree.Item("k" + menuID));

        PageButtons buttons;
        for (std::size_t i = 0; i < page.Items.size(); ++i) {
            const PageItem& item = page.Items[i];
            if (!item.Visible)
                continue;
            const QRect rect = ItemRect(page, item);
            const std::string id =
                AddButtonToMenu(project, ButtonShape{"", rect.left(), rect.top(), rect.width(), rect.height()}, "");
            buttons.IDs[NavButton{NavButton::Kind::Item, static_cast<int>(i + 1)}] = id;
            // A text overlay goes over the caption, in the caption's font.
            SetButtonOverlay(project, overlay, item.Caption, page.Design.Captions, CaptionRect(page, item));
        }
        const auto addLabel = [&](const PageLabel& label, NavButton::Kind kind, bool oval) {
            if (!label.Visible)
                return std::string();
            const std::string id = AddButtonToMenu(project, ShapeOf(label), "");
            if (oval)
                SetSpecialOverlay(project, "*Oval");
            buttons.IDs[NavButton{kind}] = id;
            return id;
        };
        buttons.Previous = addLabel(page.Design.Previous, NavButton::Kind::Previous, false);
        buttons.Next = addLabel(page.Design.Next, NavButton::Kind::Next, false);
        buttons.Main = addLabel(page.Design.Main, NavButton::Kind::Main, true);
        buttons.Setup = addLabel(page.Design.Setup, NavButton::Kind::Setup, true);
        if (!buttons.Setup.empty())
            result.SetupButtonID = buttons.Setup;

        for (std::size_t i = 0; i < page.Items.size(); ++i) {
            const auto button = buttons.IDs.find(NavButton{NavButton::Kind::Item, static_cast<int>(i + 1)});
            if (button == buttons.IDs.end())
                continue;
            ActionRow row;
            if (!AcceptActionChoice(prompt, job.Plays[i], row))
                return false;
            Label1_Click(project, static_cast<int>(std::distance(buttons.IDs.begin(), button)));
            const std::string list = UpdateOrAddActionNode(project, "", true, {row});
            if (DocNode* node = project.Doc.Tree.ObjectNode(button->second))
                UpdatePropertyInNode(project.Doc.Tree, *node, "selectAction", list, true);
        }
        WireNavigation(project, page, buttons);
        if (!job.Request.MainMenuID.empty() && !buttons.Main.empty())
            ActionFromButtonToMenu(project, buttons.Main, job.Request.MainMenuID);
        pageButtons.push_back(std::move(buttons));
    }
    for (int p = 1; p < pages; ++p) {
        ActionFromButtonToMenu(project, pageButtons[static_cast<std::size_t>(p - 1)].Next, result.MenuIDs[static_cast<std::size_t>(p)]);
        ActionFromButtonToMenu(project, pageButtons[static_cast<std::size_t>(p)].Previous, result.MenuIDs[static_cast<std::size_t>(p - 1)]);
    }
    page.Page = shownPage;
    PlacePictures(page, false);
    prompt.Progress(kPageMessage, job.DoneMessage);
    project.MarkDirty();
    guard.Done();
    return true;
}

} // namespace mw
