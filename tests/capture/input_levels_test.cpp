// What arrives at several sound inputs at once, one of which does not open.
#include <gtest/gtest.h>

#include <thread>

#include "capture/InputLevels.h"
#include "fakes/FakeSoundInput.h"

namespace spectrino {
namespace {

TEST(InputLevels, TellsThePeaksOfBothChannelsAndWhyAnInputIsSilent) {
  FakeSoundInput good, bad;
  bad.RefusedRates = {48000};
  std::vector<std::int16_t> block(2048, 0);
  block[100] = -16384;  // left, half of full scale
  block[101] = 3277;    // right, a tenth
  good.Shared->Blocks = {block};
  InputLevels levels;
  levels.Begin({{{.Name = "Good", .StableId = "g", .UsualRateHz = 96000}, &good},
                {{.Name = "Bad", .StableId = "b"}, &bad}});
  std::vector<InputReading> seen(2);
  for (int i = 0; i < 1000 && (!seen[0].Heard || seen[1].Trouble.empty()); ++i) {
    const std::vector<InputReading> now = levels.Read();
    if (now[0].Heard) seen[0] = now[0];
    seen[1] = now[1];
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  EXPECT_TRUE(seen[0].Heard);
  EXPECT_NEAR(seen[0].LeftDb, -6.02, 0.01);
  EXPECT_NEAR(seen[0].RightDb, -20, 0.01);
  EXPECT_EQ(seen[1].Trouble, "It runs at another rate.");
  EXPECT_EQ(good.Opened, std::vector<std::string>{"g@96000/1024"}) << "at the rate that it runs at";
  EXPECT_EQ(levels.Read()[0].LeftDb, -100) << "peaks since the last look";
  levels.End();
  EXPECT_TRUE(levels.Read().empty());
  for (int i = 0; i < 1000 && good.Shared->OpenStreams > 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(good.Shared->OpenStreams, 0) << "free for the run";
}

}  // namespace
}  // namespace spectrino
