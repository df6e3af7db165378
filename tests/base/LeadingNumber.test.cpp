#include "base/LeadingNumber.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

struct NumberCase {
  std::string Text;
  double Number;
};

class LeadingNumbers : public testing::TestWithParam<NumberCase> {};

TEST_P(LeadingNumbers, ReadAsExpected) {
  EXPECT_EQ(LeadingNumber(GetParam().Text), GetParam().Number) << '"' << GetParam().Text << '"';
}

INSTANTIATE_TEST_SUITE_P(Whole, LeadingNumbers,
                         testing::Values(NumberCase{"0", 0}, NumberCase{"7", 7}, NumberCase{"007", 7},
                                         NumberCase{"-400", -400}, NumberCase{"+5", 5}, NumberCase{" 7 ", 7},
                                         NumberCase{"\t 7", 7},
                                         NumberCase{"9007199254740993", 9007199254740992.0}));

INSTANTIATE_TEST_SUITE_P(Fractions, LeadingNumbers,
                         testing::Values(NumberCase{"12.5", 12.5}, NumberCase{".5", 0.5},
                                         NumberCase{"-.5", -0.5}, NumberCase{"5.", 5},
                                         NumberCase{"1.5.5", 1.5}, NumberCase{"1,5", 1}));

INSTANTIATE_TEST_SUITE_P(Exponents, LeadingNumbers,
                         testing::Values(NumberCase{"1e3", 1000}, NumberCase{"1E+3", 1000},
                                         NumberCase{"5e-1", 0.5}, NumberCase{"1e", 1}, NumberCase{"1e+", 1},
                                         NumberCase{"1ex", 1}));

INSTANTIATE_TEST_SUITE_P(RestIsIgnored, LeadingNumbers,
                         testing::Values(NumberCase{"12.5 lines", 12.5}, NumberCase{"3abc", 3},
                                         NumberCase{"0x10", 0}, NumberCase{"4-3", 4}));

INSTANTIATE_TEST_SUITE_P(NoNumber, LeadingNumbers,
                         testing::Values(NumberCase{"", 0}, NumberCase{"   ", 0}, NumberCase{"abc", 0},
                                         NumberCase{"-", 0}, NumberCase{"+", 0}, NumberCase{".", 0},
                                         NumberCase{"-.", 0}, NumberCase{".e5", 0}, NumberCase{"--5", 0},
                                         NumberCase{"+-5", 0}, NumberCase{"- 5", 0}, NumberCase{"e5", 0},
                                         NumberCase{"inf", 0}, NumberCase{"-infinity", 0},
                                         NumberCase{"nan", 0}));

INSTANTIATE_TEST_SUITE_P(OutOfRange, LeadingNumbers,
                         testing::Values(NumberCase{"1e999", Infinity}, NumberCase{"-1e999", -Infinity},
                                         NumberCase{"1e99999999999999999999", Infinity},
                                         NumberCase{std::string(400, '9'), Infinity},
                                         NumberCase{std::string(400, '9') + "e-5", Infinity},
                                         NumberCase{"0." + std::string(9, '0') + "1e999", Infinity},
                                         NumberCase{"1e-999", 0}, NumberCase{"-1e-999", 0},
                                         NumberCase{"1e-99999999999999999999", 0},
                                         NumberCase{"0." + std::string(400, '0') + "1", 0},
                                         NumberCase{"." + std::string(400, '0') + "1e+5", 0},
                                         // 10^349, which has its first digit far behind the point
                                         NumberCase{"0." + std::string(350, '0') + "1e+700", Infinity},
                                         NumberCase{"0e999", 0}));

}  // namespace
}  // namespace quillmark
