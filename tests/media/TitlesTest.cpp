// Adding, refreshing and removing titles: the exact nodes and identifiers, the dialogs and the
// questions; the new title dialog's stream lists and the renaming of a stream in the row and the
// file, and the frame rate read from the movie.
#include "media/TitleTestKit.h"

#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/ChapterNodes.h"
#include "media/LoadTitlesInForm.h"
#include "media/NewProject.h"
#include "media/RefreshTitle.h"
#include "menus/RemoveTitle.h"
#include "media/TitleNodes.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

namespace fs = std::filesystem;
using mw::GetPropertyInNode;
using mw::test::TitleProject;

// Three MP2 streams named for the language rule: a code, a three-letter code and none at all.
fs::path ThreeLanguageMovie()
{
    return mw::test::FfmpegFixture(
        "title-languages.avi",
        "-f lavfi -i testsrc=size=64x48:rate=25:d=1 -f lavfi -i sine=sample_rate=22050:d=1 "
        "-map 0 -map 1 -map 1 -map 1 -c:v mpeg4 -vtag DX50 -c:a mp2 "
        "-metadata:s:a:0 'title=Audio - de-DE;02' -metadata:s:a:1 'title=Audio - eng;02' "
        "-metadata:s:a:2 'title=Audio;02'");
}

fs::path SilentMovie()
{
    return mw::test::FfmpegFixture("title-silent.avi", "-f lavfi -i testsrc=size=64x48:rate=25:d=1 -c:v mpeg4 -vtag DX50");
}

// A file chooser that keeps the request it was shown.
class RecordingPrompt : public mw::ScriptedPrompt {
public:
    std::vector<mw::FileDialogRequest> Requests;
    std::vector<std::string> OpenFiles(const mw::FileDialogRequest& request) override
    {
        Requests.push_back(request);
        return ScriptedPrompt::OpenFiles(request);
    }
};

// A project started on the short movie: title 6, source 7, tracks 8 and 9, the name's
// translation 4 and 5 and the audio track's 10 and 11.
class Titles : public mw::test::StartedProjectTest<mw::test::ShortMovie> {};

} // namespace

TEST_F(Titles, AddTitleMakesTheNodesAndIdentifiersOfTheTables)
{
    ASSERT_EQ(p.project.Doc.NextObjectID, 12);
    mw::AddTitle(p.project, movie.string());

    EXPECT_EQ(p.Xml(12),
              R"(<Title objectID="12" translationLookupID="13" defaultAudioTrack="01wb" defaultSubtitleTrack="none">)"
              R"(<MediaSource objectID="15" mediaType="featureAvi" location=")" +
                  movie.string() +
                  R"("/><MediaTrack objectID="16" mediaSourceID="15" trackID="00dc" startFrame="0" endFrame="49" )"
                  R"(type="video"/><MediaTrack objectID="17" mediaSourceID="15" trackID="01wb" languageCode="en" )"
                  R"(strn="Audio - en-US;02" translationLookupID="18" type="audio"/></Title>)");
    EXPECT_EQ(p.Node(16).Image, "movielink");
    EXPECT_EQ(p.Node(17).Image, "audiolink");
    EXPECT_EQ(p.Xml(13), R"(<TranslationLookup objectID="13"><Translation objectID="14" languageCode="en" )"
                         R"(value="&lt;an other title 12>"/></TranslationLookup>)");
    EXPECT_EQ(p.Xml(18), R"(<TranslationLookup objectID="18"><Translation objectID="19" languageCode="en" )"
                         R"(value="Audio - en-US;02"/></TranslationLookup>)");
    EXPECT_EQ(p.project.Doc.NextObjectID, 20);
    EXPECT_EQ(p.Node(12).Parent(), &p.Node(2));
    EXPECT_TRUE(p.project.FileIsDirty);
    EXPECT_TRUE(p.prompt.Log.empty());
}

TEST_F(Titles, LanguagesComeFromTheStreamNamesAndTheChosenDefaultGetsItsSuffix)
{
    const fs::path three = ThreeLanguageMovie();
    REQUIRE_MOVIE(three);
    p.program.Values.defLang = "fr";
    const long first = p.project.Doc.NextObjectID;
    p.forms.NewTitle.push_back([](mw::NewTitleForm& form) {
        form.Combo1.ListIndex = 3; // the third audio stream, stream number 3
        return true;
    });
    mw::AddTitle(p.project, three.string());

    // Title, name lookup and translation, source, video track; then three tracks of three each.
    const std::tuple<long, const char*, const char*> expected[] = {
        {first + 5, "de", "Audio - de-DE;02"}, {first + 8, "fr", "Audio - eng;02"}, {first + 11, "fr", "Audio;02"}};
    for (const auto& [track, code, strn] : expected) {
        SCOPED_TRACE(strn);
        EXPECT_EQ(GetPropertyInNode(p.Node(track), "languageCode"), code);
        EXPECT_EQ(GetPropertyInNode(p.Node(track), "strn"), strn);
        const mw::DocNode& translation = *p.Node(track + 1).Child(1);
        EXPECT_EQ(GetPropertyInNode(translation, "languageCode"), code);
        EXPECT_EQ(GetPropertyInNode(translation, "value"), strn);
    }
    EXPECT_EQ(p.project.Doc.NextObjectID, first + 14);
    EXPECT_EQ(GetPropertyInNode(p.Node(first), "defaultAudioTrack"), "03wb");
}

TEST_F(Titles, SeveralFilesGetADialogEachAndACancelSkipsOnlyItsFile)
{
    const fs::path three = ThreeLanguageMovie();
    const fs::path silent = SilentMovie();
    REQUIRE_MOVIE(three);
    REQUIRE_MOVIE(silent);
    RecordingPrompt prompt;
    mw::Project project(p.program, prompt, p.forms);
    project.Doc = std::move(p.project.Doc);
    project.Values().LastFolderUsed = "/start/here";

    mw::mnuAddTitle(project); // the file dialog cancelled
    EXPECT_TRUE(p.forms.ShownNewTitles.empty());
    EXPECT_EQ(project.Values().LastFolderUsed, "/start/here");
    EXPECT_FALSE(project.FileIsDirty);

    const long next = project.Doc.NextObjectID;
    prompt.OpenedFiles.push_back({movie.string(), three.string(), silent.string()});
    p.forms.NewTitle = {[](mw::NewTitleForm&) { return true; }, mw::test::Cancel};
    mw::mnuAddTitle(project);

    ASSERT_EQ(prompt.Requests.size(), 2u);
    EXPECT_EQ(prompt.Requests[1].Title, "Select new titles/movies");
    EXPECT_EQ(prompt.Requests[1].Filter, "*.avi;*.divx|*.avi;*.divx");
    EXPECT_EQ(prompt.Requests[1].InitialDir, "/start/here");
    EXPECT_TRUE(prompt.Requests[1].MultiSelect);
    EXPECT_EQ(project.Values().LastFolderUsed, movie.parent_path().string());
    std::vector<std::string> locations;
    for (const mw::DocNode* title : mw::TitleNodes(project.Doc))
        locations.push_back(GetPropertyInNode(*mw::MediaSourceOf(*title), "location"));
    EXPECT_EQ(locations, (std::vector<std::string>{movie.string(), movie.string(), silent.string()}));
    EXPECT_EQ(project.Doc.NextObjectID, next + 8 + 5); // the short movie's title, then the silent one's

    // A movie without audio offers only "<none>", and gets it.
    ASSERT_EQ(p.forms.ShownNewTitles.size(), 3u);
    const mw::NewTitleForm& shown = p.forms.ShownNewTitles[2];
    EXPECT_EQ(shown.FileName, silent.string());
    ASSERT_EQ(shown.Combo1.Items.size(), 1u);
    EXPECT_EQ(shown.Combo1.Items[0].Text, "<none>");
    EXPECT_EQ(shown.Combo2.Items.size(), 1u);
    EXPECT_EQ(GetPropertyInNode(*mw::TitleNodes(project.Doc).back(), "defaultAudioTrack"), "none");
}

// A movie that cannot be read, or has gone since it was added, leaves the project as it was: no
// track, chapter or frame range goes, no identifier is taken and nothing is marked changed.
TEST_F(Titles, AMovieThatCannotBeReadChangesNothing)
{
    mw::DocTree& tree = p.project.Doc.Tree;
    const fs::path copy = p.folder.Path() / "gone.avi";
    fs::copy_file(movie, copy);
    mw::UpdatePropertyInNode(tree, p.Node(7), "location", "gone.avi", false); // relative
    ASSERT_TRUE(mw::AddTitle(p.project, copy.string()));                  // title 12, with chapters
    mw::ChapForm manual = p.OpenChapForm(1);
    manual.Mode = mw::ChapMode::Manual;
    manual.ListView1 = {{1, 0, 9, ""}, {2, 10, 49, ""}};
    ASSERT_TRUE(mw::CreateChaps(p.project, manual, false));
    const std::string junk = p.folder.Write("junk.avi", "not a movie at all").string();
    fs::remove(copy);
    p.forms.ShownNewTitles.clear();
    p.project.FileIsDirty = false;
    const std::string before = p.Xml();
    const long next = p.project.Doc.NextObjectID;

    const std::vector<std::pair<const char*, std::function<bool()>>> cases = {
        {"add a damaged file", [&] { return mw::AddTitle(p.project, junk); }},
        {"add a file that has gone", [&] { return mw::AddTitle(p.project, copy.string()); }},
        {"refresh the tracks", [&] {
             tree.Select(p.Node(6).Child(1));
             return mw::mnuRefreshTitle(p.project);
         }},
        {"refresh the chapters", [&] {
             tree.Select(&p.Node(12));
             return mw::mnuRefreshTitle(p.project);
         }},
        {"chapters from a dialog read before", [&] {
             mw::ChapForm form = manual;
             return mw::CreateChaps(p.project, form, false);
         }},
        {"chapters for every title", [&] {
             mw::ChapForm form = manual;
             form.chkAll = true;
             return mw::CreateChaps(p.project, form, false);
         }},
    };
    for (const auto& [name, run] : cases) {
        SCOPED_TRACE(name);
        p.prompt.Log.clear();
        EXPECT_FALSE(run());
        EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>{"Error geting info for file"}));
        EXPECT_EQ(p.Xml(), before);
        EXPECT_EQ(p.project.Doc.NextObjectID, next);
        EXPECT_FALSE(p.project.FileIsDirty);
        EXPECT_TRUE(p.forms.ShownNewTitles.empty());
    }
}

TEST_F(Titles, WithoutATranslationTableATitleGetsNoFurtherThanItsRows)
{
    p.project.Doc.Tree.Remove(p.Node(3));
    const long title = p.project.Doc.NextObjectID;
    mw::AddTitle(p.project, movie.string());
    EXPECT_TRUE(p.prompt.Log.empty());
    EXPECT_EQ(p.Node(title).ChildCount(), 4u);
    EXPECT_EQ(p.project.Doc.NextObjectID, title + 1);
}

TEST_F(Titles, RefreshRebuildsTracksKeepsDefaultsAndDropsHandMadeLanguages)
{
    mw::DocTree& tree = p.project.Doc.Tree;
    const std::string before = p.Xml();
    tree.Select(&p.Node(8)); // outside the title's own rows: a track is its own owner
    mw::mnuRefreshTitle(p.project);
    EXPECT_EQ(p.Xml(), before);
    EXPECT_FALSE(p.project.FileIsDirty);

    p.program.Values.defLang = "ro";
    fs::copy_file(movie, p.folder.Path() / "movie.avi");
    // A relative location, a default the user chose and an edited language.
    mw::UpdatePropertyInNode(tree, p.Node(7), "location", "movie.avi", false);
    mw::UpdatePropertyInNode(tree, p.Node(6), "defaultAudioTrack", "05wb", false);
    mw::UpdatePropertyInNode(tree, p.Node(6), "defaultSubtitleTrack", "", false);
    mw::UpdatePropertyInNode(tree, p.Node(9), "languageCode", "de", false);
    tree.Select(p.Node(6).Child(2));

    mw::mnuRefreshTitle(p.project);

    for (const char* gone : {"k8", "k9", "k10"}) // k10: the old translation of the audio track
        EXPECT_EQ(tree.Find(gone), nullptr) << gone;
    EXPECT_EQ(p.Xml(13), R"(<MediaTrack objectID="13" mediaSourceID="7" trackID="01wb" languageCode="ro" )"
                         R"(strn="Audio - en-US;02" translationLookupID="14" type="audio"/>)");
    EXPECT_EQ(GetPropertyInNode(*p.Node(14).Child(1), "languageCode"), "ro");
    EXPECT_EQ(GetPropertyInNode(p.Node(12), "endFrame"), "49");
    EXPECT_EQ(GetPropertyInNode(p.Node(6), "defaultAudioTrack"), "05wb");
    EXPECT_EQ(GetPropertyInNode(p.Node(6), "defaultSubtitleTrack"), "none");
    EXPECT_EQ(p.project.Doc.NextObjectID, 16);
    EXPECT_TRUE(p.project.FileIsDirty);
}

TEST(TitlesRefresh, ChaptersAreCutToTheShorterMovieAndTheActionsFollow)
{
    const fs::path minute = mw::test::ChapterMovie();
    const fs::path cut = mw::test::CutMovie();
    REQUIRE_MOVIE(minute);
    REQUIRE_MOVIE(cut);
    TitleProject p;
    const fs::path movie = p.folder.Path() / "movie.avi";
    fs::copy_file(minute, movie);
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    form.txtChapters = "4";
    mw::CalcChapters(form, p.prompt);
    mw::CreateChaps(p.project, form, false);
    const std::string secondOld = mw::ObjectIdOf(*mw::ChapterNodesOf(p.Node(6)).at(1));
    mw::test::AddPlayMenu(p.project.Doc, mw::CreateLanguageMenusNode(p.project.Doc, "en"), "Scenes", "6", secondOld);

    fs::copy_file(cut, movie, fs::copy_options::overwrite_existing);
    const long next = p.project.Doc.NextObjectID;
    p.project.Doc.Tree.Select(&p.Node(6));
    mw::mnuRefreshTitle(p.project);

    const std::vector<mw::DocNode*> after = mw::ChapterNodesOf(p.Node(6));
    ASSERT_EQ(after.size(), 4u);
    EXPECT_EQ(mw::ObjectIdOf(*after[0]), std::to_string(next));
    const char* ends[] = {"374", "499", "499", "499"};
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(GetPropertyInNode(*after[i]->Child(2), "endFrame"), ends[i]) << i;
        EXPECT_EQ(after[i]->Previous()->Text, " -> Chapter " + std::to_string(i + 1));
    }
    mw::DocNode* row = nullptr;
    EXPECT_TRUE(mw::FindInTree(*p.project.Doc.Tree.Root(), "mediaObjectID = " + mw::ObjectIdOf(*after[1]), row));
    EXPECT_EQ(p.project.Doc.Tree.Find("k" + secondOld), nullptr);
    // The title's name, its audio track's translation, four chapter names and one shared by
    // the chapters' audio tracks: the old ones went, the new ones came.
    EXPECT_EQ(p.Node(3).ChildCount(), 1u + 7u);
    EXPECT_TRUE(p.prompt.Texts().empty());
}

TEST_F(Titles, RefreshOfAChapterWithoutFramesSaysSoAndUsesZero)
{
    mw::DocNode& chapter = mw::AddNextObjectNode(p.project.Doc, p.Node(6), "Chapter", "chapter");
    mw::AddPropRow(p.project.Doc.Tree, chapter, "translationLookupID", "none");
    p.project.Doc.Tree.Select(&p.Node(6));

    mw::mnuRefreshTitle(p.project);

    EXPECT_EQ(p.prompt.Texts(),
              (std::vector<std::string>{"Error in chapters. Can not found startFrame and endFrame"}));
    const std::vector<mw::DocNode*> chapters = mw::ChapterNodesOf(p.Node(6));
    ASSERT_EQ(chapters.size(), 1u);
    EXPECT_EQ(GetPropertyInNode(*chapters[0]->Child(2), "startFrame"), "0");
    EXPECT_EQ(GetPropertyInNode(*chapters[0]->Child(2), "endFrame"), "0");
}

TEST_F(Titles, RemoveWantsATitleAndAYesThenTakesTheFirstMenuPerLanguageThatPlaysIt)
{
    mw::Document& doc = p.project.Doc;
    const std::string before = p.Xml();
    doc.Tree.Select(&p.Node(2));
    mw::mnuRemoveTitle(p.project);
    doc.Tree.Select(&p.Node(6));
    p.prompt.Answers.push_back(mw::PromptAnswer::No);
    mw::mnuRemoveTitle(p.project);
    ASSERT_EQ(p.prompt.Log.size(), 2u);
    EXPECT_EQ(p.prompt.Log[0].Text, "Please select a Title node");
    EXPECT_EQ(p.prompt.Log[1].Kind, "ask");
    EXPECT_EQ(p.prompt.Log[1].Text, "Are you sure you want to delete the selected title?\r\n"
                                    "Also will be deleted any menu that is related to this title.");
    EXPECT_EQ(p.Xml(), before);
    EXPECT_FALSE(p.project.FileIsDirty);

    mw::DocNode& english = mw::CreateLanguageMenusNode(doc, "en");
    const std::string other = mw::ObjectIdOf(mw::test::AddPlayMenu(doc, english, "Other", "99", ""));
    const std::string first = mw::ObjectIdOf(mw::test::AddPlayMenu(doc, english, "First", "6", ""));
    const std::string second = mw::ObjectIdOf(mw::test::AddPlayMenu(doc, english, "Second", "6", ""));
    mw::DocNode& german = mw::CreateLanguageMenusNode(doc, "de");
    const std::string deutsch = mw::ObjectIdOf(mw::test::AddPlayMenu(doc, german, "Erste", "6", ""));
    doc.Tree.Select(p.Node(6).Child(1));

    mw::mnuRemoveTitle(p.project);

    for (const std::string& gone : std::vector<std::string>{"6", "4", "7", "8", "9", "10", first, deutsch})
        EXPECT_EQ(doc.Tree.Find("k" + gone), nullptr) << gone;
    EXPECT_NE(doc.Tree.Find("k" + second), nullptr);
    EXPECT_NE(doc.Tree.Find("k" + other), nullptr);
    EXPECT_EQ(p.Node(3).ChildCount(), 1u); // only the table's own objectID row is left
    EXPECT_EQ(doc.Tree.Selected(), &p.Node(2));
    EXPECT_TRUE(p.project.FileIsDirty);
}

TEST_F(Titles, RemoveFreesNothingThatADamagedMenuNamesAsItsBackground)
{
    mw::Document& doc = p.project.Doc;
    mw::DocNode& english = mw::CreateLanguageMenusNode(doc, "en");
    mw::DocNode& german = mw::CreateLanguageMenusNode(doc, "de");
    const std::string germanID = mw::ObjectIdOf(german);
    mw::DocNode& first = mw::test::AddPlayMenu(doc, english, "First", "6", "");
    mw::AddPropRow(doc.Tree, first, "backgroundVideoID", "6"); // the title being removed
    mw::DocNode& erste = mw::test::AddPlayMenu(doc, german, "Erste", "6", "");
    mw::AddPropRow(doc.Tree, erste, "backgroundVideoID", germanID); // the language being walked
    const std::string firstID = mw::ObjectIdOf(first);
    const std::string ersteID = mw::ObjectIdOf(erste);
    doc.Tree.Select(&p.Node(6));

    mw::mnuRemoveTitle(p.project);

    for (const std::string& gone : {std::string("6"), firstID, ersteID})
        EXPECT_EQ(doc.Tree.Find("k" + gone), nullptr) << gone;
    EXPECT_NE(doc.Tree.Find("k" + germanID), nullptr);
    EXPECT_EQ(doc.Tree.Selected(), &p.Node(2));
}

TEST_F(Titles, LoadTitlesInFormListsTitlesWithTheirMoviesAndEveryMenu)
{
    mw::Document& doc = p.project.Doc;
    mw::UpdatePropertyInNode(doc.Tree, p.Node(7), "location", "sub\\movie.avi", false);
    mw::AddPropRow(doc.Tree, mw::AddNextObjectNode(doc, p.Node(2), "Title", "movie"), "translationLookupID", "none");
    const std::string menu =
        mw::ObjectIdOf(mw::test::AddPlayMenu(doc, mw::CreateLanguageMenusNode(doc, "de"), "", "6", ""));

    const mw::TitlesAndMenus lists = mw::LoadTitlesInForm(doc);

    ASSERT_EQ(lists.lstTitles.size(), 2u);
    EXPECT_EQ(lists.lstTitles[0].Path, (p.folder.Path() / "sub/movie.avi").string());
    EXPECT_EQ(lists.lstTitles[0].TitleID, "6");
    EXPECT_EQ(lists.lstTitles[0].SourceID, "7");
    EXPECT_EQ(lists.lstTitles[1].Path + lists.lstTitles[1].SourceID, ""); // a title without a source
    ASSERT_EQ(lists.lstMenus.size(), 1u);
    const mw::MenuListRow& row = lists.lstMenus[0];
    EXPECT_EQ(row.Key, "k" + menu);
    EXPECT_EQ(row.MenuID, menu);
    EXPECT_EQ(row.MenuType + "|" + row.MenuName + "|" + row.LanguageCode, "title||de");
}

namespace {

using mw::ComboList;
using mw::TrackRow;

using Entries = std::vector<std::pair<std::string, int>>;

Entries EntriesOf(const ComboList& combo)
{
    Entries entries;
    for (const auto& item : combo.Items)
        entries.emplace_back(item.Text, item.ItemData);
    return entries;
}

TEST(NewTitleFormTest, CombosListTheAudioAndSubtitleStreamsByNumber)
{
    const mw::TrackRows rows = {
        TrackRow{"Video", "Video - en-US;MO", "", "00dc", "0", "9"},
        TrackRow{"Audio", "Audio - en-US;02", "", "01wb", "", ""},
        TrackRow{"Subtitle", "Subtitle - ro-RO;02", "", "02sb", "", ""},
        TrackRow{"Unknown", "x", "", "03??", "", ""},
        TrackRow{"audio", "Audio - de-DE;03", "", "04wb", "", ""},
    };
    ComboList audio;
    ComboList subtitle;
    audio.AddItem("stale", 7);

    mw::AddAudioSubtitleToComboFromListView(rows, audio, subtitle);

    EXPECT_EQ(EntriesOf(audio), (Entries{{"<none>", 0}, {"Audio - en-US;02 | 1", 1}, {"Audio - de-DE;03 | 4", 4}}));
    EXPECT_EQ(EntriesOf(subtitle), (Entries{{"<none>", 0}, {"Subtitle - ro-RO;02 | 2", 2}}));
    EXPECT_EQ(audio.ListIndex, 1);
    EXPECT_EQ(mw::ChosenStream(audio), 1);
    audio.ListIndex = 2;
    EXPECT_EQ(mw::ChosenStream(audio), 4);
    audio.ListIndex = 0;
    EXPECT_EQ(mw::ChosenStream(audio), -1);

    mw::AddAudioSubtitleToComboFromListView({rows[0]}, audio, subtitle);
    EXPECT_EQ(EntriesOf(audio), (Entries{{"<none>", 0}}));
    EXPECT_EQ(audio.ListIndex, 0);
    EXPECT_EQ(mw::ChosenStream(subtitle), -1);
}

TEST(NewTitleFormTest, UpdateWritesTheNameIntoTheRowAndTheFile)
{
    const auto fixture = mw::test::ShortMovie();
    REQUIRE_MOVIE(fixture);
    mw::test::ScratchFolder folder;
    const auto movie = folder.Path() / "movie.avi";
    std::filesystem::copy_file(fixture, movie);
    mw::ScriptedPrompt prompt;
    mw::NewTitleForm form;
    double fps = 0;
    ASSERT_TRUE(mw::FillNewTitleForm(form, movie.string(), fps, prompt));
    ASSERT_EQ(form.Tracks.size(), 2u);
    EXPECT_DOUBLE_EQ(fps, 25.0);
    EXPECT_EQ(form.Combo1.ListIndex, 1);

    form.Text1 = "typed";
    EXPECT_FALSE(mw::UpdateTrackName(form, prompt)); // no row selected
    EXPECT_EQ(form.Tracks[1].NameLanguage, "Audio - en-US;02");

    mw::SelectTrackRow(form, 1);
    EXPECT_EQ(form.Text1, "Audio - en-US;02");
    form.Text1 = "Audio - ro;02";
    EXPECT_TRUE(mw::UpdateTrackName(form, prompt));
    EXPECT_EQ(form.Tracks[1].NameLanguage, "Audio - ro;02");
    mw::TrackRows reread;
    mw::LoadStreamsToListView(movie.string(), reread, false, fps, prompt);
    EXPECT_EQ(reread[1].NameLanguage, "Audio - ro;02");

    // The row takes the name even when the file cannot.
    form.FileName = (folder.Path() / "gone.avi").string();
    form.Text1 = "Audio - it;02";
    EXPECT_FALSE(mw::UpdateTrackName(form, prompt));
    EXPECT_EQ(form.Tracks[1].NameLanguage, "Audio - it;02");
}

TEST(ReadMovieFps, TellsTheRateOrSaysWhyNot)
{
    mw::ScriptedPrompt prompt;
    double fps = 23.976;
    mw::ReadMovieFps(mw::test::ShortMovie().string(), fps, prompt);
    EXPECT_EQ(fps, 25);
    EXPECT_TRUE(prompt.Log.empty());

    const mw::test::ScratchFolder scratch;
    mw::ReadMovieFps(scratch.Write("broken.avi", "not a movie").string(), fps, prompt);
    EXPECT_EQ(fps, 25);
    EXPECT_EQ(prompt.Log.size(), 1u);
}

} // namespace
