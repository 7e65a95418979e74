// docprep list.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "commands.h"
#include "commands/operations.h"

using docprep::Operation;
using docprep::Parameter;
using nlohmann::json;

TEST(list, every_operation_stands_on_a_line_and_every_parameter_below_it) {
    const Outcome outcome = docprep_with({"list"});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ("", outcome.err);
    std::istringstream lines(outcome.out);
    std::string line;
    for (const Operation& operation : docprep::operations()) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_EQ(0u, line.find(operation.name + " ")) << line;
        EXPECT_NE(std::string::npos, line.find(operation.description)) << line;
        for (const Parameter& parameter : operation.parameters) {
            ASSERT_TRUE(std::getline(lines, line));
            EXPECT_EQ(0u, line.find("  --" + parameter.name + " ")) << line;
            EXPECT_NE(std::string::npos, line.find(described(parameter))) << line;
        }
    }
    EXPECT_FALSE(std::getline(lines, line)) << line;
}

TEST(list, the_second_column_is_aligned) {
    const std::string text = docprep_with({"list"}).out;
    const size_t column = text.find("Gray levels of a colour picture");
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ("  ", line.substr(column - 2, 2)) << line;
        EXPECT_NE(' ', line[column]) << line;
    }
}

TEST(list, json_has_ranges_defaults_and_choices) {
    const Outcome outcome = docprep_with({"list", "--json"});
    const json operations = json::parse(outcome.out);
    ASSERT_EQ(docprep::operations().size(), operations.size());
    for (const json& operation : operations) {
        const json& parameters = operation["parameters"];
        if (operation["name"] == "thresholdSeg") {
            EXPECT_EQ("gray", operation["input"]);
            EXPECT_EQ("picture", operation["result"]);
            ASSERT_EQ(1u, parameters.size());
            EXPECT_EQ("INTEGER", parameters[0]["type"]);
            EXPECT_EQ(0, parameters[0]["least"]);
            EXPECT_EQ(255, parameters[0]["most"]);
            EXPECT_EQ(true, parameters[0]["required"]);
            EXPECT_FALSE(parameters[0].contains("default"));
        } else if (operation["name"] == "morphologyBinary") {
            EXPECT_EQ("binary", operation["input"]);
            EXPECT_EQ((Names{"dilate", "erode", "open", "close"}), parameters[1]["choices"].get<Names>());
            EXPECT_FALSE(parameters[1].contains("least"));
        } else if (operation["name"] == "otsu") {
            EXPECT_EQ("numbers", operation["result"]);
            EXPECT_EQ(false, parameters[0]["required"]);
        } else if (operation["name"] == "rot90ClockWise") {
            EXPECT_EQ("1", parameters[0]["default"]);
        }
    }
}

TEST(list, takes_nothing_else) {
    expect_wrong_usage({"list", "otsu"}, "otsu");
    expect_wrong_usage({"list", "--jsno"}, "did you mean '--json'?");
}
