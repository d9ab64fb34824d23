// Adding, refreshing and removing titles: the exact nodes and identifiers, the dialogs and the
// questions.
#include "media/TitleTestKit.h"

#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/LoadTitlesInForm.h"
#include "media/RefreshTitle.h"
#include "media/RemoveTitle.h"
#include "media/TitleNodes.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::Dump;
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
    return mw::test::FfmpegFixture("title-silent.avi",
                                   "-f lavfi -i testsrc=size=64x48:rate=25:d=1 -c:v mpeg4 -vtag DX50");
}

// The translation table's children from the given identifier on.
std::string TableFrom(TitleProject& p, long firstId)
{
    std::string out;
    for (const auto& child : p.Node(3)) {
        if (child->HasChildren() && std::stol(mw::ObjectIdOf(*child)) >= firstId)
            out += Dump(*child);
    }
    return out;
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

} // namespace

TEST(Titles, AddTitleMakesTheNodesAndIdentifiersOfTheTables)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    ASSERT_EQ(p.project.Doc.NextObjectID, 12); // title 6, source 7, tracks 8 and 9, translation 10 and 11

    mw::AddTitle(p.project, movie.string());

    const std::string path = movie.string();
    EXPECT_EQ(Dump(p.Node(12)), "movie Title [k12]\n"
                                "  objectid objectID = 12\n"
                                "  prop translationLookupID = 13\n"
                                "  prop defaultAudioTrack = 01wb\n"
                                "  prop defaultSubtitleTrack = none\n"
                                "  movie MediaSource [k15]\n"
                                "    objectid objectID = 15\n"
                                "    prop mediaType = featureAvi\n"
                                "    prop location = " +
                                    path +
                                    "\n"
                                    "  movielink MediaTrack [k16]\n"
                                    "    objectid objectID = 16\n"
                                    "    prop mediaSourceID = 15\n"
                                    "    prop trackID = 00dc\n"
                                    "    prop startFrame = 0\n"
                                    "    prop endFrame = 49\n"
                                    "    prop type = video\n"
                                    "  audiolink MediaTrack [k17]\n"
                                    "    objectid objectID = 17\n"
                                    "    prop mediaSourceID = 15\n"
                                    "    prop trackID = 01wb\n"
                                    "    prop languageCode = en\n"
                                    "    prop strn = Audio - en-US;02\n"
                                    "    prop translationLookupID = 18\n"
                                    "    prop type = audio\n");
    EXPECT_EQ(TableFrom(p, 12), "translookup TranslationLookup [k13]\n"
                                "  objectid objectID = 13\n"
                                "  trans Translation [k14]\n"
                                "    objectid objectID = 14\n"
                                "    prop languageCode = en\n"
                                "    prop value = <an other title 12>\n"
                                "translookup TranslationLookup [k18]\n"
                                "  objectid objectID = 18\n"
                                "  trans Translation [k19]\n"
                                "    objectid objectID = 19\n"
                                "    prop languageCode = en\n"
                                "    prop value = Audio - en-US;02\n");
    EXPECT_EQ(p.project.Doc.NextObjectID, 20);
    EXPECT_TRUE(p.project.FileIsDirty);
    EXPECT_EQ(p.Node(12).Parent(), &p.Node(2));
    EXPECT_TRUE(p.prompt.Log.empty());
}

TEST(Titles, LanguageOfAStreamComesFromItsNameOrTheMenuLanguage)
{
    const fs::path movie = ThreeLanguageMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.program.Values.defLang = "fr";
    p.StartWith(movie);
    const long first = p.project.Doc.NextObjectID;
    mw::AddTitle(p.project, movie.string());

    // Title, name lookup and translation, source, video track; then three tracks of three each.
    const struct {
        long Track;
        const char* Code;
        const char* Strn;
    } expected[] = {{first + 5, "de", "Audio - de-DE;02"}, {first + 8, "fr", "Audio - eng;02"},
                    {first + 11, "fr", "Audio;02"}};
    for (const auto& e : expected) {
        SCOPED_TRACE(e.Strn);
        mw::DocNode& track = p.Node(e.Track);
        EXPECT_EQ(mw::GetPropertyInNode(track, "languageCode"), e.Code);
        EXPECT_EQ(mw::GetPropertyInNode(track, "strn"), e.Strn);
        mw::DocNode& translation = *p.Node(e.Track + 1).Child(1);
        EXPECT_EQ(mw::GetPropertyInNode(translation, "languageCode"), e.Code);
        EXPECT_EQ(mw::GetPropertyInNode(translation, "value"), e.Strn);
    }
    EXPECT_EQ(p.project.Doc.NextObjectID, first + 14);
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(first), "defaultAudioTrack"), "01wb");
}

TEST(Titles, TheChosenDefaultTracksAreWrittenWithTheirSuffix)
{
    const fs::path movie = ThreeLanguageMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    const long title = p.project.Doc.NextObjectID;
    p.forms.NewTitle.push_back([](mw::NewTitleForm& form) {
        form.Combo1.ListIndex = 3; // the third audio stream, stream number 3
        return true;
    });
    mw::AddTitle(p.project, movie.string());
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(title), "defaultAudioTrack"), "03wb");

    const long second = p.project.Doc.NextObjectID;
    p.forms.NewTitle.push_back([](mw::NewTitleForm& form) {
        form.Combo1.ListIndex = 0;
        return true;
    });
    mw::AddTitle(p.project, movie.string());
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(second), "defaultAudioTrack"), "none");
}

TEST(Titles, AMovieWithoutAudioOffersOnlyNone)
{
    const fs::path movie = SilentMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    const long title = p.project.Doc.NextObjectID;
    mw::AddTitle(p.project, movie.string());

    ASSERT_EQ(p.forms.ShownNewTitles.size(), 1u);
    const mw::NewTitleForm& shown = p.forms.ShownNewTitles[0];
    EXPECT_EQ(shown.FileName, movie.string());
    ASSERT_EQ(shown.Combo1.Items.size(), 1u);
    EXPECT_EQ(shown.Combo1.Items[0].Text, "<none>");
    EXPECT_EQ(shown.Combo2.Items.size(), 1u);
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(title), "defaultAudioTrack"), "none");
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(title), "defaultSubtitleTrack"), "none");
    EXPECT_EQ(p.project.Doc.NextObjectID, title + 5);
}

TEST(Titles, SeveralFilesGetADialogEachAndACancelSkipsOnlyItsFile)
{
    const fs::path a = mw::test::ShortMovie();
    const fs::path b = SilentMovie();
    const fs::path c = ThreeLanguageMovie();
    REQUIRE_MOVIE(a);
    REQUIRE_MOVIE(b);
    REQUIRE_MOVIE(c);
    TitleProject p;
    RecordingPrompt prompt;
    mw::Project project(p.program, prompt, p.forms);
    p.StartWith(a);
    project.Doc = std::move(p.project.Doc);
    project.Values().LastFolderUsed = "/start/here";
    prompt.OpenedFiles.push_back({a.string(), b.string(), c.string()});
    p.forms.NewTitle = {[](mw::NewTitleForm&) { return true; }, mw::test::Cancel,
                        [](mw::NewTitleForm&) { return true; }};

    mw::mnuAddTitle(project);

    ASSERT_EQ(prompt.Requests.size(), 1u);
    EXPECT_EQ(prompt.Requests[0].Title, "Select new titles/movies");
    EXPECT_EQ(prompt.Requests[0].Filter, "*.avi;*.divx|*.avi;*.divx");
    EXPECT_EQ(prompt.Requests[0].InitialDir, "/start/here");
    EXPECT_TRUE(prompt.Requests[0].MultiSelect);
    EXPECT_EQ(project.Values().LastFolderUsed, a.parent_path().string());

    ASSERT_EQ(p.forms.ShownNewTitles.size(), 3u);
    EXPECT_EQ(p.forms.ShownNewTitles[1].FileName, b.string());
    std::vector<std::string> locations;
    for (const mw::DocNode* title : mw::TitleNodes(project.Doc))
        locations.push_back(mw::GetPropertyInNode(*mw::MediaSourceOf(*title), "location"));
    EXPECT_EQ(locations, (std::vector<std::string>{a.string(), a.string(), c.string()}));
}

TEST(Titles, CancellingTheFileDialogChangesNothing)
{
    TitleProject p;
    p.project.Values().LastFolderUsed = "/kept";
    mw::mnuAddTitle(p.project);
    EXPECT_TRUE(p.forms.ShownNewTitles.empty());
    EXPECT_EQ(p.project.Values().LastFolderUsed, "/kept");
    EXPECT_FALSE(p.project.FileIsDirty);
}

TEST(Titles, AMovieThatCannotBeReadGivesATitleWithoutTracks)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    const fs::path broken = p.folder.Write("broken.avi", "not a movie at all");
    const long title = p.project.Doc.NextObjectID;
    mw::AddTitle(p.project, broken.string());

    EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>{"Error geting info for file"}));
    EXPECT_TRUE(p.forms.ShownNewTitles.at(0).Tracks.empty());
    mw::DocNode& node = p.Node(title);
    EXPECT_EQ(node.ChildCount(), 5u); // four rows and the source
    EXPECT_EQ(node.LastChild()->Text, "MediaSource");
    EXPECT_EQ(p.project.Doc.NextObjectID, title + 4);
}

TEST(Titles, WithoutATranslationTableTheTitleStaysHalfBuilt)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    p.project.Doc.Tree.Remove(p.Node(3));
    const long title = p.project.Doc.NextObjectID;
    mw::AddTitle(p.project, movie.string());

    EXPECT_TRUE(p.prompt.Log.empty());
    EXPECT_EQ(p.Node(title).ChildCount(), 4u);
    EXPECT_EQ(p.project.Doc.NextObjectID, title + 1);
}

TEST(Titles, RefreshRebuildsTracksKeepsDefaultsAndDropsHandMadeLanguages)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.program.Values.defLang = "ro";
    p.StartWith(movie);
    fs::copy_file(movie, p.folder.Path() / "movie.avi");
    mw::DocTree& tree = p.project.Doc.Tree;
    // A relative location, a default the user chose and an edited language.
    mw::UpdatePropertyInNode(tree, p.Node(7), "location", "movie.avi", false);
    mw::UpdatePropertyInNode(tree, p.Node(6), "defaultAudioTrack", "05wb", false);
    mw::UpdatePropertyInNode(tree, p.Node(6), "defaultSubtitleTrack", "", false);
    mw::UpdatePropertyInNode(tree, p.Node(9), "languageCode", "de", false);
    tree.Select(p.Node(6).Child(2));

    mw::mnuRefreshTitle(p.project);

    EXPECT_EQ(tree.Find("k8"), nullptr);
    EXPECT_EQ(tree.Find("k9"), nullptr);
    EXPECT_EQ(tree.Find("k10"), nullptr); // the old translation of the audio track
    EXPECT_EQ(Dump(p.Node(13)), "audiolink MediaTrack [k13]\n"
                                "  objectid objectID = 13\n"
                                "  prop mediaSourceID = 7\n"
                                "  prop trackID = 01wb\n"
                                "  prop languageCode = ro\n"
                                "  prop strn = Audio - en-US;02\n"
                                "  prop translationLookupID = 14\n"
                                "  prop type = audio\n");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(14).Child(1), "languageCode"), "ro");
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(12), "endFrame"), "49");
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(6), "defaultAudioTrack"), "05wb");
    EXPECT_EQ(mw::GetPropertyInNode(p.Node(6), "defaultSubtitleTrack"), "none");
    EXPECT_EQ(p.project.Doc.NextObjectID, 16);
    EXPECT_TRUE(p.project.FileIsDirty);
}

TEST(Titles, RefreshOutsideATitleDoesNothing)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    const std::string before = p.Xml();
    p.project.Doc.Tree.Select(&p.Node(8)); // a track: its owner is the track itself
    mw::mnuRefreshTitle(p.project);
    EXPECT_EQ(p.Xml(), before);
    EXPECT_FALSE(p.project.FileIsDirty);
}

TEST(Titles, RefreshOfChaptersCutsThemToTheShorterMovieAndFollowsTheActions)
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
    const std::vector<mw::DocNode*> before = mw::ChapterNodesOf(p.Node(6));
    ASSERT_EQ(before.size(), 4u);
    const std::string secondOld = mw::ObjectIdOf(*before[1]);
    mw::DocNode& language = mw::CreateLanguageMenusNode(p.project.Doc, "en");
    mw::test::AddPlayMenu(p.project.Doc, language, "Scenes", "6", secondOld);

    fs::copy_file(cut, movie, fs::copy_options::overwrite_existing);
    const long next = p.project.Doc.NextObjectID;
    p.project.Doc.Tree.Select(&p.Node(6));
    mw::mnuRefreshTitle(p.project);

    const std::vector<mw::DocNode*> after = mw::ChapterNodesOf(p.Node(6));
    ASSERT_EQ(after.size(), 4u);
    const long firstNew = std::stol(mw::ObjectIdOf(*after[0]));
    EXPECT_EQ(firstNew, next);
    const long ends[] = {374, 499, 499, 499};
    for (std::size_t i = 0; i < after.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(mw::GetPropertyInNode(*after[i]->Child(2), "endFrame"), std::to_string(ends[i]));
        EXPECT_EQ(after[i]->Previous()->Text, " -> Chapter " + std::to_string(i + 1));
    }
    mw::DocNode* row = nullptr;
    ASSERT_TRUE(mw::FindInTree(*p.project.Doc.Tree.Root(),
                               "mediaObjectID = " + mw::ObjectIdOf(*after[1]), row));
    EXPECT_EQ(p.project.Doc.Tree.Find("k" + secondOld), nullptr);
    // The title's name, its audio track's translation, four chapter names and one shared by
    // the chapters' audio tracks: the old ones went, the new ones came.
    EXPECT_EQ(p.Node(3).ChildCount(), 1u + 7u);
    EXPECT_TRUE(p.prompt.Texts().empty());
}

TEST(Titles, RefreshOfAChapterWithoutFramesSaysSoAndUsesZero)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::Document& doc = p.project.Doc;
    mw::DocNode& chapter = mw::AddNextObjectNode(doc, p.Node(6), "Chapter", "chapter");
    mw::AddPropRow(doc.Tree, chapter, "translationLookupID", "none");
    doc.Tree.Select(&p.Node(6));

    mw::mnuRefreshTitle(p.project);

    EXPECT_EQ(p.prompt.Texts(),
              (std::vector<std::string>{"Error in chapters. Can not found startFrame and endFrame"}));
    const std::vector<mw::DocNode*> chapters = mw::ChapterNodesOf(p.Node(6));
    ASSERT_EQ(chapters.size(), 1u);
    EXPECT_EQ(mw::GetPropertyInNode(*chapters[0]->Child(2), "startFrame"), "0");
    EXPECT_EQ(mw::GetPropertyInNode(*chapters[0]->Child(2), "endFrame"), "0");
}

TEST(Titles, RemoveAsksAndNoLeavesTheProjectAsItWas)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    const std::string before = p.Xml();
    p.project.Doc.Tree.Select(&p.Node(6));
    p.prompt.Answers.push_back(mw::PromptAnswer::No);

    mw::mnuRemoveTitle(p.project);

    ASSERT_EQ(p.prompt.Log.size(), 1u);
    EXPECT_EQ(p.prompt.Log[0].Kind, "ask");
    EXPECT_EQ(p.prompt.Log[0].Text, "Are you sure you want to delete the selected title?\r\n"
                                    "Also will be deleted any menu that is related to this title.");
    EXPECT_EQ(p.Xml(), before);
    EXPECT_FALSE(p.project.FileIsDirty);
}

TEST(Titles, RemoveOutsideATitleAsksForOne)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    p.project.Doc.Tree.Select(&p.Node(2));
    mw::mnuRemoveTitle(p.project);
    EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>{"Please select a Title node"}));
}

TEST(Titles, RemoveDeletesTheTitleAndTheFirstMenuPerLanguageThatPlaysIt)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::Document& doc = p.project.Doc;
    mw::DocNode& english = mw::CreateLanguageMenusNode(doc, "en");
    mw::DocNode& other = mw::test::AddPlayMenu(doc, english, "Other", "99", "");
    mw::DocNode& first = mw::test::AddPlayMenu(doc, english, "First", "6", "");
    mw::DocNode& second = mw::test::AddPlayMenu(doc, english, "Second", "6", "");
    mw::DocNode& german = mw::CreateLanguageMenusNode(doc, "de");
    mw::DocNode& deutsch = mw::test::AddPlayMenu(doc, german, "Erste", "6", "");
    const std::string otherId = mw::ObjectIdOf(other), firstId = mw::ObjectIdOf(first),
                      secondId = mw::ObjectIdOf(second), deutschId = mw::ObjectIdOf(deutsch);
    doc.Tree.Select(p.Node(6).Child(1));

    mw::mnuRemoveTitle(p.project);

    for (const char* gone : {"k6", "k4", "k7", "k8", "k9", "k10"})
        EXPECT_EQ(doc.Tree.Find(gone), nullptr) << gone;
    EXPECT_EQ(doc.Tree.Find("k" + firstId), nullptr);
    EXPECT_EQ(doc.Tree.Find("k" + deutschId), nullptr);
    EXPECT_NE(doc.Tree.Find("k" + secondId), nullptr);
    EXPECT_NE(doc.Tree.Find("k" + otherId), nullptr);
    EXPECT_EQ(p.Node(3).ChildCount(), 1u); // only the table's own objectID row is left
    EXPECT_EQ(doc.Tree.Selected(), &p.Node(2));
    EXPECT_TRUE(p.project.FileIsDirty);
}

TEST(Titles, RemovingATitleWithChaptersLeavesTheTranslationsOfItsOwnTracks)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    form.Mode = mw::ChapMode::Manual;
    form.ListView1 = {{1, 0, 20, ""}, {2, 21, 49, ""}};
    mw::CreateChaps(p.project, form, false);
    ASSERT_EQ(mw::ChapterNodesOf(p.Node(6)).size(), 2u);
    p.project.Doc.Tree.Select(&p.Node(6));

    mw::mnuRemoveTitle(p.project);

    EXPECT_EQ(p.project.Doc.Tree.Find("k6"), nullptr);
    EXPECT_EQ(p.project.Doc.Tree.Find("k4"), nullptr);
    // The own audio track's translation stays; the chapters' ones are gone.
    ASSERT_NE(p.project.Doc.Tree.Find("k10"), nullptr);
    EXPECT_EQ(p.Node(3).ChildCount(), 2u);
}

TEST(Titles, LoadTitlesInFormListsTitlesWithTheirMoviesAndEveryMenu)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::Document& doc = p.project.Doc;
    mw::UpdatePropertyInNode(doc.Tree, p.Node(7), "location", "sub\\movie.avi", false);
    mw::DocNode& bare = mw::AddNextObjectNode(doc, p.Node(2), "Title", "movie");
    mw::AddPropRow(doc.Tree, bare, "translationLookupID", "none");
    mw::DocNode& german = mw::CreateLanguageMenusNode(doc, "de");
    mw::DocNode& menu = mw::test::AddPlayMenu(doc, german, "", "6", "");

    const mw::TitlesAndMenus lists = mw::LoadTitlesInForm(doc);

    ASSERT_EQ(lists.lstTitles.size(), 2u);
    EXPECT_EQ(lists.lstTitles[0].Path, (p.folder.Path() / "sub/movie.avi").string());
    EXPECT_EQ(lists.lstTitles[0].TitleID, "6");
    EXPECT_EQ(lists.lstTitles[0].SourceID, "7");
    EXPECT_EQ(lists.lstTitles[1].Path, "");
    EXPECT_EQ(lists.lstTitles[1].SourceID, "");
    ASSERT_EQ(lists.lstMenus.size(), 1u);
    const std::string id = mw::ObjectIdOf(menu);
    EXPECT_EQ(lists.lstMenus[0].Key, "k" + id);
    EXPECT_EQ(lists.lstMenus[0].MenuType, "title");
    EXPECT_EQ(lists.lstMenus[0].MenuName, "");
    EXPECT_EQ(lists.lstMenus[0].LanguageCode, "de");
    EXPECT_EQ(lists.lstMenus[0].MenuID, id);
}
