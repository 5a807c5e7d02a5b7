// Numbers and frequencies as text.
#include <gtest/gtest.h>

#include <cmath>

#include "state/FrequencyText.h"
#include "state/Val.h"

namespace spectrino {
namespace {

struct ValCase {
  const char* text;
  double value;
};

class ValRule : public testing::TestWithParam<ValCase> {};

TEST_P(ValRule, ReadsTheLeadingNumber) {
  EXPECT_DOUBLE_EQ(Val(GetParam().text), GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Texts, ValRule,
                         testing::Values(ValCase{"", 0}, ValCase{"   ", 0}, ValCase{"abc", 0},
                                         ValCase{"12abc", 12}, ValCase{" \t-3.5", -3.5}, ValCase{"+7", 7},
                                         ValCase{".25x", 0.25}, ValCase{"5.", 5}, ValCase{"1,5", 1},
                                         ValCase{"1e5", 1}, ValCase{"--4", 0}, ValCase{"- 4", 0},
                                         ValCase{"0x1F", 0}, ValCase{"inf", 0}, ValCase{".", 0},
                                         ValCase{"00014074000", 14074000}, ValCase{"-0.5.6", -0.5}));

TEST(Val, HugeTextStaysFinite) {
  EXPECT_TRUE(std::isfinite(Val(std::string(5000, '9'))));
  EXPECT_EQ(RoundToInt16(Val(std::string(5000, '9'))), 32767);
  EXPECT_EQ(RoundToInt32(-1e300), INT32_MIN);
}

TEST(Rounding, HalvesGoToEven) {
  EXPECT_EQ(RoundToInt16(2.5), 2);
  EXPECT_EQ(RoundToInt16(3.5), 4);
  EXPECT_EQ(RoundToInt32(-0.5), 0);
  EXPECT_EQ(RoundToInt32(std::nan("")), 0);
}

TEST(FrequencyTexts, ReadsWhatIsTyped) {
  const struct {
    const char* Typed;
    double MHz;
  } rows[] = {{"14.074", 14.074},
              {" 14,0745 ", 14.0745},
              {"14.074.250", 14.07425},
              {"14.074.25", 14.07425},
              {"14074", 14.074},
              {"3573.5", 3.5735},
              {"144174000", 144.174},
              {"1296.1", 1296.1},
              {"7", 7},
              {"999", 999},
              {".136", 0.136},
              {"", 0},
              {".", 0},
              {"14.07.4", 0},
              {"1.2.3.4", 0},
              {"14 074", 0},
              {"-7", 0},
              {"1e9", 0},
              {"99999999999999", 0}};
  for (const auto& row : rows) EXPECT_NEAR(TypedMHz(row.Typed), row.MHz, 1e-9) << row.Typed;
}

TEST(FrequencyTexts, GroupsByMHzKHzHz) {
  EXPECT_EQ(FrequencyText(14.074), "14.074.000");
  EXPECT_EQ(FrequencyText(0.1365), "0.136.500");
  EXPECT_EQ(FrequencyText(1296.1), "1296.100.000");
  EXPECT_EQ(FrequencyText(0.000009), "---------");
  EXPECT_EQ(FrequencyText(std::nan("")), "---------");
}

TEST(FrequencyTexts, GridLabelsNameTheirLine) {
  EXPECT_EQ(GridFrequencyText(14.074, true), "14.074.0");
  EXPECT_EQ(GridFrequencyText(14.074, false), "074.0");
  EXPECT_EQ(GridFrequencyText(14.0739999999, true), "14.074.0");
  EXPECT_EQ(GridFrequencyText(14.07396, true), "14.073.9") << "cut, not rounded";
  EXPECT_EQ(GridFrequencyText(0.000001, false), "-----");
  EXPECT_EQ(GridFrequencyText(144.1740004, false), "174.0");
  EXPECT_EQ(GridOffsetText(12500), "+12.5K");
  EXPECT_EQ(GridOffsetText(-500), "+.5K");
  EXPECT_EQ(GridOffsetText(0), "+.0K");
}

}  // namespace
}  // namespace spectrino
