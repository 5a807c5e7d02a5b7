// The device list and the rates that High Res. Zoom chooses.
#include <gtest/gtest.h>

#include "capture/DeviceList.h"
#include "capture/ZoomPlan.h"
#include "fakes/FakeSoundInput.h"
#include "fakes/RadioSources.h"

namespace spectrino {
namespace {

TEST(DeviceList, TheChosenInputIsOpenedByWhatListedIt) {
  FakeSoundInput cards;
  cards.List = {{"Line", "a", true, 0}, {"Broken", "b", false, 0}, {"Line", "c", true, 0}};
  FakeSoundInput demo;
  demo.List = {{"Demo", "demo", true, 0, SourceKind::Demo}};
  DeviceList list({&cards, &demo}, kRadioSources);
  list.InitDevices();
  EXPECT_EQ(list.Sources().Names(), (std::vector<std::string>{"Line", "Line", "Demo", "ICOM", "K4", "K4D"}));
  const auto opener = [&](const ChosenSource& chosen) {
    const DeviceList::Entry* entry = list.Find(chosen);
    return entry != nullptr ? entry->Input : nullptr;
  };
  EXPECT_EQ(opener({{SourceKind::SoundInput, "demo"}}), &demo);
  EXPECT_EQ(opener({{SourceKind::SoundInput, "c"}}), &cards);
  EXPECT_EQ(opener({{SourceKind::SoundInput, "b"}, "Line"}), nullptr) << "missing, not replaced";
  EXPECT_EQ(opener({{SourceKind::K4}, "K4"}), nullptr);
}

TEST(ZoomPlans, HighResolutionLowersTheRateAndKeepsTheZoom) {
  const std::tuple<int, int, int, ZoomPlan> cells[] = {{0, 6, 5, {192000, 13, 1}},
                                                       {3, 5, 5, {22050, 13, 2}},
                                                       {5, 6, 5, {48000, 14, 8}},
                                                       {5, 3, 8, {22050, 16, 16}},
                                                       {5, 0, 5, {11025, 14, 32}}};
  for (const auto& [zoom, rate, bits, plan] : cells) EXPECT_EQ(ChooseZoomPlan(true, zoom, rate, bits), plan);
}

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
