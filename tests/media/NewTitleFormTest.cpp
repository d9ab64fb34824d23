// The new title dialog: its stream lists, the renaming of a stream in the row and the file, and
// the frame rate read from the movie.
#include "media/NewProject.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

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
