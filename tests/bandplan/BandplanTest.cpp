// Frequencies at the edges of bands, and what a change of band leaves in the file.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "bandplan/BandMemory.h"
#include "bandplan/BandPlan.h"
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

TEST(BandPlanTest, ThePublishedPlansAreReadWhole) {
  const struct {
    int Region;
    double MHz;
    const char* Name;
  } places[] = {{1, 14.0, "20 m CW"},        {1, 14.0699999, "20 m CW"}, {1, 14.07, "20 m Digital"},
                {1, 14.1, "20 m Beacons"},   {1, 14.35, "20 m All"},     {1, 14.3500001, "out of band"},
                {1, 7.25, "out of band"},    {2, 7.25, "40 m Phone"},    {3, 3.85, "80 m Phone"},
                {1, 29.515, "10 m"},         {1, 70.2, "4 m Phone"},     {2, 70.2, "out of band"},
                {3, 145.9, "2 m Satellite"}, {1, 433.5, "70 cm FM"},     {2, 1.8, "160 m Digital"}};
  for (int region = 1; region <= 3; ++region) {
    std::ifstream file(std::string(SPECTRINO_SHARE) + "/bandplan/region" + std::to_string(region) + ".json");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const ReadBandPlan read = ParseBandPlan(text);
    EXPECT_EQ(read.Trouble, "") << region;
    for (const char* told : {"\"source\"", "\"date\"", "National rules differ"})
      EXPECT_NE(text.find(told), std::string::npos) << region << told;
    for (const auto& place : places)
      EXPECT_TRUE(place.Region != region || read.Plan.NameAt(place.MHz) == place.Name)
          << region << place.Name;
    // No hole that the plan does not have: 12.5 kHz on 2 m, the guards below the FM of 10 m and 70 cm.
    for (const PlannedBand& band : read.Plan.Bands()) {
      double named = 0;
      for (const BandSegment& segment : band.Segments) named += segment.HighMHz - segment.LowMHz;
      EXPECT_GT(named, 0.98 * (band.HighMHz - band.LowMHz)) << band.Name;
    }
  }
  EXPECT_EQ(BandPlan().NameAt(14.1), "");
}

TEST(BandPlanTest, WhatMakesNoSenseIsSkippedAndTold) {
  const auto file = [](const std::string& bands) { return "{\"bands\": [" + bands + "]}"; };
  const auto band = [](const std::string& segments) {
    return "{\"name\": \"20 m\", \"low\": 14000, \"high\": 14350, \"segments\": [" + segments + "]}";
  };
  const std::string cw = R"({"low": 14000, "high": 14070, "use": "CW"})";
  const struct {
    std::string Text;
    std::string At14050;
    bool Told;
  } files[] = {{"", "", true},
               {"[1, 2", "", true},
               {std::string(200000, '['), "", true},
               {std::string((1 << 20) + 1, ' '), "", true},
               {R"({"bands": 7})", "", true},
               {file(band(cw)), "20 m CW", false},
               {file(band("")), "20 m", false},
               {file("7, {}, null, " + band(cw)), "20 m CW", true},
               {file(R"({"name": "20 m", "low": 14350, "high": 14000})"), "", true},
               {file(R"({"name": "20 m", "low": "14000", "high": 14350})"), "", true},
               {file(R"({"name": "20 m", "low": 1e400, "high": 14350})"), "", true},
               {file(R"({"name": "a band with a name without end", "low": 14000, "high": 14350})"), "", true},
               {file(band(cw + R"(, {"low": 14000, "high": 14010, "use": "Music"}, 5)")), "20 m CW", true},
               {file(band(R"({"low": 13000, "high": 14100, "use": "FM"})")), "20 m FM", false},
               {file(band(R"({"low": 7000, "high": 7100, "use": "FM"})")), "20 m", true},
               // The one that begins first keeps its part, whatever the order in the file.
               {file(band(R"({"low": 14040, "high": 14200, "use": "FM"}, )" + cw)), "20 m CW", true},
               {file(band(cw) + R"(, {"name": "wide", "low": 13900, "high": 14100})"), "wide", true},
               {file(band(cw) + "," + band(cw)), "20 m CW", true}};
  for (const auto& c : files) {
    const ReadBandPlan read = ParseBandPlan(c.Text);
    EXPECT_EQ(read.Plan.NameAt(14.05), c.At14050) << c.Text.substr(0, 200);
    EXPECT_EQ(!read.Trouble.empty(), c.Told) << c.Text.substr(0, 200) << read.Trouble;
  }
  std::string many = band(cw);
  for (int n = 1; n < 1000; ++n)
    many += ", {\"name\": \"b\", \"low\": " + std::to_string(20000 + n) +
            ", \"high\": " + std::to_string(20001 + n) + "}";
  EXPECT_EQ(ParseBandPlan(file(many)).Plan.Bands().size(), 64U);
}

}  // namespace
}  // namespace spectrino
