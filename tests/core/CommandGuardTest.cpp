#include "core/CommandGuard.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <tuple>

TEST(CommandGuard, WhatACommandThrowsIsToldAndTheCallerGoesOn)
{
    const std::vector<std::tuple<const char*, std::function<void()>, std::vector<std::string>>> cases = {
        {"finishes", [] {}, {}},
        {"std::exception", [] { throw std::out_of_range("no such node"); },
         {"The command stopped on an unexpected error: no such node"}},
        {"anything else", [] { throw 42; }, {"The command stopped on an unexpected error: an error of unknown kind"}},
    };
    for (const auto& [name, command, told] : cases) {
        SCOPED_TRACE(name);
        mw::ScriptedPrompt prompt;
        EXPECT_EQ(mw::RunCommandCaught(prompt, command), told.empty());
        EXPECT_EQ(prompt.Texts(), told);
    }
}
