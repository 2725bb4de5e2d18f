#include "model/json_numbers.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace kestrel {

namespace {

using Replacement = std::pair<std::string, std::string>;

TEST(JsonNumbersTest, EveryWellFormedNumberBecomesZero) {
    for (const std::string number :
         {"0", "-0", "7", "10", "-10", "1.5", "0.0", "-0.50", "1e5", "1E5", "1e+5", "1e-05",
          "10.25e400", "123456789012345678901234567890"})
        EXPECT_EQ(withNumbersZeroed("[" + number + "]"), "[0]") << number;
}

TEST(JsonNumbersTest, AMalformedNumberStaysAsItIs) {
    for (const std::string text : {"-", "01", "-01", "00", "1.", "1.e5", "1e", "1e+", "1e5.5",
                                   "1.5.2", "--1", "1-", "1+1", "1e5e5", "0e", "-e5"})
        EXPECT_EQ(withNumbersZeroed("[" + text + "]"), "[" + text + "]") << text;
}

TEST(JsonNumbersTest, DigitsInStringsStay) {
    for (const std::string text : {R"(["1e400"])", R"(["\"1","\\","2"])", R"({"1":"-1"})",
                                   R"(["12)", R"(["12\)", R"(["12\")", "\"", "\"\\"})
        EXPECT_EQ(withNumbersZeroed(text), text);
}

TEST(JsonNumbersTest, WhatStandsAroundANumberStays) {
    for (const auto& [text, zeroed] : {
             Replacement("", ""),
             Replacement(" [ 12 , true,false ,null ] ", " [ 0 , true,false ,null ] "),
             Replacement(R"({"\\":12,"b":[-3.5e7,"4"]})", R"({"\\":0,"b":[0,"4"]})"),
             Replacement("[+1]", "[+0]"), // no number either way
             Replacement("[.5]", "[.0]"),
             Replacement("12x", "0x"),
             Replacement("true1", "true0"),
             Replacement("1 2", "0 0"),
         })
        EXPECT_EQ(withNumbersZeroed(text), zeroed) << text;
}

} // namespace

} // namespace kestrel
