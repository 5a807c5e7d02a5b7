// A section "PAN" on a real disk, replaced again and again by a program that knows nothing of us.
#include <gmock/gmock.h>

#include <atomic>
#include <cmath>
#include <set>
#include <thread>

#include "host/PanBackend.h"
#include "settings/TestStore.h"
#include "state/Val.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

// Each version holds numbers that no other has, and no digit less is one of them.
TEST(PanFiles, ReplacedTwentyTimesASecondTellWholeVersionsAlone) {
  constexpr int kVersions = 40;
  const test::TemporaryFolder folder;
  const auto put = [&](int version) {
    const std::string n = std::to_string(100 + version);
    folder.Put("Ketrel.new", "; " + std::string(4000, 'x') + "\n[PAN]\nFA=14." + n + "\nFB=7." + n +
                                 "\nMD=3\nFI=-" + n + "\nFT=1\n");
    std::filesystem::rename(folder.Path("Ketrel.new"), folder.Path("Ketrel.ini"));
  };
  put(0);
  PosixSettingsFile file(folder.Path(""));
  RecordingNotifier user;
  SettingsStore store(file, user);
  PanSettings settings;
  settings.Control = CatControl::KetrelIf;
  const SystemClock clock;
  PanBackend backend(store, settings, clock);
  backend.Open();

  std::atomic<bool> done = false;
  std::thread program([&] {
    for (int version = 1; version < kVersions; ++version) {
      std::this_thread::sleep_for(50ms);
      put(version);
    }
    done = true;
  });
  std::set<int> seen;
  int wrong = 0;
  for (bool last = false; !last; std::this_thread::sleep_for(100us)) {
    last = done;
    RadioState radio;
    radio.RadioMode = mode::kCw;
    backend.Open();  // reads anew, whatever the pace of a run
    backend.Refresh(radio);
    const int version = RoundToInt32((radio.MainFreqMHz - 14) * 1000) - 100;
    seen.insert(version);
    const double rest = (100 + version) / 1000.0;
    const bool whole = std::abs(radio.MainFreqMHz - 14 - rest) < 1e-9 && version >= 0 &&
                       version < kVersions && std::abs(radio.SubFreqMHz - 7 - rest) < 1e-9 &&
                       radio.RadioMode == mode::kCw && radio.SplitOn == 1 &&
                       std::abs(backend.LinkOffsetKHz() + rest) < 1e-9;
    wrong += whole ? 0 : 1;
  }
  program.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_TRUE(seen.contains(0) && seen.contains(kVersions - 1)) << "from the first to the last";
  EXPECT_GT(seen.size(), kVersions / 4U) << "and those in between";
  EXPECT_THAT(user.Messages, ::testing::IsEmpty());
  EXPECT_THAT(user.Logged, ::testing::IsEmpty());
}

}  // namespace
}  // namespace spectrino
