// The simulated K4 against the program's own parsers.
#include <gtest/gtest.h>

#include <algorithm>

#include "k4/CatParser.h"
#include "k4/PanStream.h"
#include "k4/RecordingPanel.h"
#include "sim/k4/K4Radio.h"

namespace spectrino {
namespace {

TEST(K4Radio, ItsFramesShowItsBandWhereItIs) {
  K4Radio radio(true);
  K4State state;
  RecordingPanel panel;
  std::string replies =
      radio.Answer("#SCL", 1) + radio.Answer("#SPN", 1) + radio.Answer("MD", 1) + radio.Answer("MD$", 1);
  ParseK4Replies(replies, state, panel);
  state.K4SpanPreset = 1;
  std::string read;
  for (const char display : {'A', 'Y', 'Z'}) read += radio.Frame(display, 3);
  ParseK4PanFrames({reinterpret_cast<const std::uint8_t*>(read.data()), read.size()}, state);
  EXPECT_EQ(state.K4PanChannels[kPanMain].SpanMHz, 0.05);
  EXPECT_EQ(state.K4PanChannels[kPanMain].CenterMHz, 14.074);
  EXPECT_EQ(state.K4PanChannels[kPanMiniSub].CenterMHz, 14.08);
  EXPECT_EQ(state.K4PanChannels[kPanMain].RefLevelDb, -140);
  // The strongest point of the line is the strongest station of the band, at the same frequency.
  const K4PanChannel& line = state.K4PanChannels[kPanMain];
  const auto strongest = std::max_element(line.Levels.begin() + 1, line.Levels.begin() + 1 + line.Points);
  const double share = (static_cast<double>(strongest - line.Levels.begin()) - 0.5) / line.Points;
  const double hz = (line.LowEdgeMHz + share * line.SpanMHz) * 1e6;
  EXPECT_NEAR(RadioBand().Strongest(hz - 40, hz + 40, 3), *strongest, 3);
  EXPECT_GT(*strongest, -100);
}

}  // namespace
}  // namespace spectrino
