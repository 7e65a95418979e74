#include "commands/parameters.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>

using docprep::Parameter;
using docprep::ParameterKind;
using docprep::parse;
using Numbers = std::vector<double>;

namespace {

Parameter level() {
    return {"level", ParameterKind::kWhole, "a level", {0, 255}, {}, false, "8"};
}

Parameter factor() {
    return {"factor", ParameterKind::kNumber, "a factor", {double{FLT_TRUE_MIN}, double{FLT_MAX}}};
}

}  // namespace

TEST(parameters, whole_numbers_lie_in_their_range) {
    EXPECT_EQ(Numbers{0}, parse(level(), "0"));
    EXPECT_EQ(Numbers{255}, parse(level(), "255"));
    for (const char* text : {"-1", "256", "7.5", "1e2", "", "x", "7x", "0,1", "99999999999999999999"})
        EXPECT_FALSE(parse(level(), text)) << text;
}

TEST(parameters, numbers_are_finite_and_in_their_range) {
    EXPECT_EQ(Numbers{0.25}, parse(factor(), "0.25"));
    for (const char* text : {"0", "-1", "1e39", "1e999", "nan", "inf", ""})
        EXPECT_FALSE(parse(factor(), text)) << text;
}

TEST(parameters, lists_have_their_length) {
    const docprep::Range any = {INT_MIN, INT_MAX};
    const Parameter point = {"point", ParameterKind::kPoint, "", any};
    const Parameter place = {"place", ParameterKind::kPlace, "", any};
    const Parameter rect = {"rect", ParameterKind::kRect, "", any};
    const Parameter matrix = {"matrix", ParameterKind::kMatrix, "", any};
    EXPECT_EQ((Numbers{-3, 4}), parse(point, "-3,4"));
    EXPECT_EQ((Numbers{-3.5, 4}), parse(place, "-3.5, 4"));
    EXPECT_EQ((Numbers{1, 2, 3, 4}), parse(rect, "1,2,3,4"));
    EXPECT_EQ((Numbers{1, 0, 0.5, 0, 1, 0}), parse(matrix, "1,0,0.5,0,1,0"));
    EXPECT_FALSE(parse(point, "1"));
    EXPECT_FALSE(parse(point, "1,2,3"));
    EXPECT_FALSE(parse(point, "1.5,2"));
    EXPECT_FALSE(parse(rect, "1,2,3"));
    EXPECT_FALSE(parse(matrix, "1,0,0,0,1"));
}

TEST(parameters, extents_are_above_0) {
    const Parameter size = {"size", ParameterKind::kExtents, ""};
    EXPECT_EQ((Numbers{3, 5}), parse(size, "3x5"));
    for (const char* text : {"3", "0x5", "3x-1", "3,5"}) EXPECT_FALSE(parse(size, text)) << text;
}

TEST(parameters, are_described_with_range_and_default) {
    EXPECT_EQ("a level: 0 .. 255; 8 by default", described(level()));
    EXPECT_EQ("a factor: above 0", described(factor()));
    EXPECT_EQ("a whole number, 0 .. 255", expected(level()));
    EXPECT_EQ("a number, above 0", expected(factor()));
    EXPECT_EQ("which: a, b", described(Parameter{"type", ParameterKind::kChoice, "which", {}, {"a", "b"}}));
    EXPECT_EQ("any", described(Parameter{"n", ParameterKind::kWhole, "any", {INT_MIN, INT_MAX}}));
}

TEST(parameters, arguments_come_out_in_their_types) {
    docprep::Arguments arguments;
    arguments.set("whole", {-7});
    arguments.set("size", {3, 5});
    arguments.set("rect", {1, 2, 3, 4});
    arguments.set("flag", {});
    EXPECT_EQ(-7, arguments.whole("whole"));
    EXPECT_EQ(3, arguments.size("size").width);
    EXPECT_EQ(5, arguments.size("size").height);
    EXPECT_EQ(4, arguments.rect("rect").height);
    EXPECT_TRUE(arguments.given("flag"));
    EXPECT_FALSE(arguments.given("mask"));
    EXPECT_TRUE(arguments.picture("mask").empty());
}
