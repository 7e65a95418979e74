#include "commands/operations.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

using docprep::Operand;
using docprep::Operation;
using docprep::Parameter;
using docprep::ParameterKind;

namespace {

/// The names of all static functions of the public class, as its header has them.
std::set<std::string> functions_of_the_library() {
    std::ifstream file(std::string(DOCPREP_SAMPLES) + "/../jni/orvex_991/cv_imgproc.h");
    std::set<std::string> names;
    for (std::string line; std::getline(file, line);) {
        const size_t bracket = line.find('(');
        if (line.rfind("    static ", 0) != 0 || bracket == std::string::npos) continue;
        const size_t space = line.rfind(' ', bracket);
        names.insert(line.substr(space + 1, bracket - space - 1));
    }
    return names;
}

}  // namespace

TEST(operations, are_all_that_the_library_has) {
    std::set<std::string> in_the_table;
    for (const Operation& operation : docprep::operations())
        in_the_table.insert(operation.name.substr(0, operation.name.find('-')));
    const std::set<std::string> functions = functions_of_the_library();
    EXPECT_GT(functions.size(), 40u);
    EXPECT_EQ(functions, in_the_table);
}

TEST(operations, have_names_and_parameters_once) {
    std::set<std::string> names;
    for (const Operation& operation : docprep::operations()) {
        EXPECT_TRUE(names.insert(operation.name).second) << operation.name;
        EXPECT_EQ(&operation, docprep::find_operation(operation.name));
        std::set<std::string> parameters;
        for (const Parameter& parameter : operation.parameters)
            EXPECT_TRUE(parameters.insert(parameter.name).second) << operation.name << " " << parameter.name;
    }
    EXPECT_EQ(nullptr, docprep::find_operation("Otsu"));
}

TEST(operations, have_defaults_that_are_values) {
    for (const Operation& operation : docprep::operations())
        for (const Parameter& parameter : operation.parameters) {
            if (parameter.unless_given.empty()) continue;
            EXPECT_FALSE(parameter.required) << parameter.name;
            EXPECT_TRUE(parse(parameter, parameter.unless_given)) << operation.name << " " << parameter.name;
        }
}

TEST(operations, get_one_channel_of_a_colour_picture) {
    docprep::Image white;
    white.mat_create(2, 3, 3, 255);
    EXPECT_EQ(3, as_operand(Operand::kAny, white).channels);
    EXPECT_EQ(3, as_operand(Operand::kColour, white).channels);
    const docprep::Image gray = as_operand(Operand::kGray, white);
    EXPECT_EQ(1, gray.channels);
    EXPECT_EQ(253, gray.data[0]);  // as bgr2gray has it
    const docprep::Image binary = as_operand(Operand::kBinary, white);
    EXPECT_EQ(1, binary.channels);
    EXPECT_EQ(255, binary.data[0]);
    white.data[0] = 254;
    EXPECT_EQ(252, as_operand(Operand::kBinary, white).data[0]);
}

TEST(operations, get_three_channels_of_a_gray_picture_only_for_colours) {
    docprep::Image gray;
    gray.mat_create(2, 3, 1, 7);
    for (const Operand operand : {Operand::kAny, Operand::kGray, Operand::kBinary})
        EXPECT_EQ(1, as_operand(operand, gray).channels);
    const docprep::Image colour = as_operand(Operand::kColour, gray);
    EXPECT_EQ(3, colour.channels);
    EXPECT_EQ(7, colour.data[17]);
}
