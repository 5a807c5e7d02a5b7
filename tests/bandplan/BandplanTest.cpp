// Frequencies at the edges of bands, and what a change of band leaves in the file.
#include <gmock/gmock.h>

#include "bandplan/BandMemory.h"
#include "bandplan/Bands.h"
#include "settings/TestStore.h"

namespace spectrino {
namespace {

TEST(Bands, AFrequencyIsInItsBands) {
  const struct {
    double MHz;
    int Button;
    std::optional<int> RefBand;
    int Number;
  } edges[] = {
      {0, 0, 0, 22},        {0.1, 0, 0, 1},          {0.2, 0, 0, 23},       {1.5, 1, 1, 24},
      {1.799999, 1, 1, 25}, {2.0, 1, 1, 3},          {2.000001, 0, 0, 25},  {5.3, 0, 0, 5},
      {7.5, 3, 3, 6},       {10, 4, 4, 7},           {14.500001, 0, 0, 28}, {15, 0, 0, 28},
      {29, 9, 9, 12},       {29.000001, 10, 10, 12}, {30.000001, 0, 0, 30}, {50, 11, 11, 13},
      {70.2, 0, 0, 14},     {148, 12, 12, 15},       {425, 0, 0, 17},       {430, 13, std::nullopt, 17},
      {500.5, 0, 0, 36},    {3500, 0, 0, 21},        {3500.1, 0, 0, 0},     {-1, 0, 0, 0}};
  for (const auto& at : edges) {
    EXPECT_EQ(BandButton(at.MHz), at.Button) << at.MHz;
    EXPECT_EQ(RefBand(at.MHz), at.RefBand) << at.MHz;
    EXPECT_EQ(IcomBandNumber(at.MHz), at.Number) << at.MHz;
  }
}

using BandMemoryTest = test::StoreTest;

TEST_F(BandMemoryTest, ButtonsRecallAFrequencyOfTheirBand) {
  const BandMemory memory = LoadBandMemory(Store);
  EXPECT_EQ(memory.Records[0].FrequencyMHz, 15);
  for (int button = 1; button < kBandButtonCount; ++button) {
    const int band = BandRecordOfButton(button);
    EXPECT_EQ(IcomBandNumber(memory.Records[static_cast<std::size_t>(band)].FrequencyMHz), band) << button;
  }
}

struct Leaving {
  BandMemoryRadio radio;
  BandRecord now;
  std::string stored;
};
class LeavingTest : public BandMemoryTest, public ::testing::WithParamInterface<Leaving> {};

TEST_P(LeavingTest, StoresTheRecord) {
  BandMemory memory = LoadBandMemory(Store);
  SaveBandMemory(Store, memory, GetParam().radio, GetParam().now);
  EXPECT_EQ(OnDisk(), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Bands, LeavingTest,
    ::testing::Values(
        Leaving{BandMemoryRadio::Icom, {14.0255, 2, -5}, "[BSR]\nFREQ8=14.0255\nMODE8=2\nLEVEL8=-5\n"},
        Leaving{BandMemoryRadio::Icom,
                {0.137, 1, 3},
                "[BSR]\nFREQ1=0.137\nMODE1=1\nLEVEL1=3\nFREQ0=0.137\nMODE0=1\nLEVEL0=3\n"},
        Leaving{BandMemoryRadio::Icom, {13.6, 3, 4}, "[BSR]\nFREQ0=13.6\nMODE0=3\nLEVEL0=4\n"},
        Leaving{BandMemoryRadio::Icom, {4000, 3, 4}, "[BSR]\nFREQ0=4000\nMODE0=3\nLEVEL0=4\n"},
        Leaving{BandMemoryRadio::K4, {7.03, 3, 99}, "[BSR]\nFREQK46=7.03\nMODEK46=3\nLEVELK46=10\n"},
        Leaving{BandMemoryRadio::K4, {13.6, 3, 4}, ""}, Leaving{BandMemoryRadio::Icom, {0, 3, 4}, ""}));

TEST_F(BandMemoryTest, AReturnFindsWhatWasLeft) {
  BandMemory memory = LoadBandMemory(Store);
  SaveBandMemory(Store, memory, BandMemoryRadio::Icom, {21.03, 2, -8});
  SaveBandMemory(Store, memory, BandMemoryRadio::K4, {28.5, 2, 0});
  SaveBandLevel(Store, memory, 21.2, 6);
  SaveBandLevel(Store, memory, 13.6, 7);
  EXPECT_EQ(memory.Records[10].FrequencyMHz, 21.03);
  EXPECT_EQ(memory.Records[12].FrequencyMHz, 28.5);
  SaveBandMemory(Store, memory, BandMemoryRadio::Icom, {13.6, 3, -2});
  SaveBandMemory(Store, memory, BandMemoryRadio::K4, {9.5, 5, 0});
  const BandRecord& general = memory.Records[0];
  EXPECT_EQ(std::tuple(general.FrequencyMHz, general.Mode, general.Level), std::tuple(13.6, 3, -2))
      << "\"Gen\" in the same session";
  SaveBandLevel(Store, memory, 13.6, 7);
  EXPECT_EQ(general.Level, 7);
  const BandMemory next = LoadBandMemory(Store);
  EXPECT_EQ(next.Records[10].FrequencyMHz, 21.03);
  EXPECT_EQ(next.Records[10].Level, 6);
  EXPECT_EQ(next.Records[0].Level, 7);
  EXPECT_EQ(next.Records[12].FrequencyMHz, 28.2) << "K4 records begin anew in each run";
}

}  // namespace
}  // namespace spectrino
