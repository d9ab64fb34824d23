#include "media/NewProject.h"

#include "TitleTestKit.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace mw::test {
namespace {

TEST(ReadMovieFps, TellsTheRateOrSaysWhyNot)
{
    ScriptedPrompt prompt;
    double fps = 23.976;
    ReadMovieFps(ShortMovie().string(), fps, prompt);
    EXPECT_EQ(fps, 25);
    EXPECT_TRUE(prompt.Log.empty());

    const ScratchFolder scratch;
    ReadMovieFps(scratch.Write("broken.avi", "not a movie").string(), fps, prompt);
    EXPECT_EQ(fps, 25);
    EXPECT_EQ(prompt.Log.size(), 1u);
}

} // namespace
} // namespace mw::test
