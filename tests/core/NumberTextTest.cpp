#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

TEST(NumberText, FifteenSignificantDigitsAtMostAndNoExponent)
{
    const struct {
        double Value;
        const char* Text;
    } cases[] = {
        {44100, "44100"}, {23.976, "23.976"}, {48000.0 / 1152, "41.6666666666667"}, {-2.5, "-2.5"}, {-0.0, "0"},
        {0.1 + 0.2, "0.3"}, {1e-7, "0.0000001"}, {1234567890123456.0, "1234567890123460"},
        {1e20, "100000000000000000000"}, {9.9999999999999999, "10"},
        {std::numeric_limits<double>::quiet_NaN(), "NaN"}, {-std::numeric_limits<double>::infinity(), "-Infinity"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(mw::NumberText(c.Value), c.Text) << c.Text;
}

TEST(NumberText, HalvesRoundToEvenAndZerosPad)
{
    EXPECT_EQ(mw::RoundHalfEven(2.5), 2);
    EXPECT_EQ(mw::RoundHalfEven(3.5), 4);
    EXPECT_EQ(mw::RoundHalfEven(-2.5), -2);
    EXPECT_DOUBLE_EQ(mw::RoundHalfEven(0.125, 2), 0.12);
    EXPECT_DOUBLE_EQ(mw::RoundHalfEven(24000.0 / 1001, 3), 23.976);
    EXPECT_EQ(mw::RoundHalfEven(1e300, 3), 1e300);
    EXPECT_EQ(mw::PadZeros(7, 2), "07");
    EXPECT_EQ(mw::PadZeros(-5, 2), "-05");
    EXPECT_EQ(mw::PadZeros(1234, 3), "1234");
    EXPECT_EQ(mw::PadZeros(std::numeric_limits<long long>::min(), 2), "-9223372036854775808");
}
