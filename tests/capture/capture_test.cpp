// The device list and the rates that High Res. Zoom chooses.
#include <gtest/gtest.h>

#include "capture/DeviceList.h"
#include "capture/ZoomPlan.h"
#include "fakes/FakeSoundInput.h"

namespace spectrino {
namespace {

TEST(DeviceList, RadiosFollowTheInputsAndUnusableOnesAreLeftOut) {
  FakeSoundInput cards;
  cards.List = {{"Line", "a", true, 0}, {"Broken", "b", false, 0}, {"Line", "c", true, 0}};
  FakeSoundInput demo;
  demo.List = {{"Demo", "demo", true, 0}};
  DeviceList list({&cards, &demo});
  list.InitDevices();
  EXPECT_EQ(list.Names(), (std::vector<std::string>{"Line", "Line", "Demo", "ICOM", "K4", "K4D"}));
  EXPECT_EQ(list.SoundInputCount(), 3);
}

TEST(DeviceList, TheChosenInputIsFoundAgainWhateverWasPluggedIn) {
  FakeSoundInput cards;
  cards.List = {{"Radio", "a", true, 0}, {"Mic", "b", true, 0}};
  DeviceList list({&cards});
  list.InitDevices();
  PanSettings settings;
  settings.DeviceId = "a";
  cards.List.insert(cards.List.begin(), {"Radio", "new", true, 0});
  list.InitDevices();
  EXPECT_EQ(list.FindChosen(settings), 1);
  cards.List = {{"Mic", "b", true, 0}};
  list.InitDevices();
  EXPECT_EQ(list.FindChosen(settings), std::nullopt);  // missing, not replaced
}

struct PlanCase {
  int zoomIndex, rateIndex, bitsIndex;
  ZoomPlan plan;
};

class HighResolutionPlan : public testing::TestWithParam<PlanCase> {};

TEST_P(HighResolutionPlan, LowersTheRateAndKeepsTheZoom) {
  const PlanCase& given = GetParam();
  EXPECT_EQ(ChooseZoomPlan(true, given.zoomIndex, given.rateIndex, given.bitsIndex), given.plan);
}

INSTANTIATE_TEST_SUITE_P(Cells, HighResolutionPlan,
                         testing::Values(PlanCase{0, 6, 5, {192000, 13, 1}},
                                         PlanCase{1, 6, 5, {192000, 13, 2}},
                                         PlanCase{2, 4, 5, {44100, 13, 2}}, PlanCase{2, 5, 5, {48000, 13, 2}},
                                         PlanCase{3, 5, 5, {22050, 13, 2}}, PlanCase{4, 6, 5, {48000, 13, 4}},
                                         PlanCase{5, 6, 5, {48000, 14, 8}}, PlanCase{4, 2, 5, {22050, 14, 8}},
                                         PlanCase{5, 3, 8, {22050, 16, 16}},
                                         PlanCase{5, 0, 5, {11025, 14, 32}}));

// Over every cell: what is shown is the zoom that was asked for, within what the rates allow (44.1 against 48
// kHz).
TEST(ZoomPlans, EveryCellShowsTheSpanThatWasAskedFor) {
  for (int zoom = 0; zoom < 6; ++zoom) {
    for (int rate = 0; rate < 7; ++rate) {
      const ZoomPlan plain = ChooseZoomPlan(false, zoom, rate, 5);
      const ZoomPlan fine = ChooseZoomPlan(true, zoom, rate, 5);
      const double asked = static_cast<double>(plain.SampleRate) / plain.DisplayZoom;
      const double shown = static_cast<double>(fine.SampleRate) / fine.DisplayZoom;
      EXPECT_NEAR(shown / asked, 1, 0.1) << "zoom " << zoom << " rate " << rate;
    }
  }
}

}  // namespace
}  // namespace spectrino
