// What the S-meter shows, and what the calibration does to a level: by source, to the dB.
#include <gtest/gtest.h>

#include "run/RunBench.h"

namespace spectrino {
namespace {

struct MeterCase {
  bool Tells;      ///< the radio tells its own reading
  int OptSM;       ///< 1: that reading is wanted
  int Correction;  ///< "SMCorr", dB
  float LineLevel;
  double ToldDbm;
  float Shown;
  CatControl Control = CatControl::RadioDirect;  ///< another than the radio's own tells no reading
};

class MeterShows : public testing::TestWithParam<MeterCase> {};

TEST_P(MeterShows, TheLevelOfTheSource) {
  const MeterCase& given = GetParam();
  RunBench bench;
  bench.State.Settings.Source.Id.Kind = SourceKind::K4;
  bench.State.Settings.OptSM = given.OptSM;
  bench.State.Settings.SMeterCorrDb = given.Correction;
  bench.State.Settings.Control = given.Control;
  bench.Radio.BesideDbm = given.ToldDbm;
  RunCycle& cycle = bench.Cycle;
  ASSERT_TRUE(cycle.Start());
  RadioState& radio = bench.State.Radio;
  radio.MainFreqMHz = bench.RadioRig.FreqMHz = 14.05;
  if (given.Control == CatControl::RadioDirect) {
    radio.SMeterTold = given.Tells;
    radio.SMeterDbm = given.ToldDbm;
  }
  cycle.Step();
  bench.Radio.Next =
      SpectrumLine{std::vector<float>(101, given.LineLevel), 100, 1, 14.0, 14.05, 14.1, -140, -40, 1, {}, {}};
  bench.Radio.Ready = true;
  cycle.Step();
  EXPECT_TRUE(cycle.Frames().Meter().SMeterKnown);
  EXPECT_FLOAT_EQ(cycle.Frames().Meter().SMeterDbm, given.Shown);
}

INSTANTIATE_TEST_SUITE_P(Sources, MeterShows,
                         testing::Values(MeterCase{true, 1, 0, -120, -73, -73},
                                         MeterCase{true, 1, -6, -120, -73, -79},
                                         MeterCase{true, 1, -6, -120, -73, -79, CatControl::FixedLo},
                                         MeterCase{true, 0, -6, -120, -73, -90},
                                         MeterCase{false, 1, -6, -100, 0, -70}));

TEST(Calibration, RaisesTheLevelsByItsDecibelsAndByWhatLiesAheadOfTheCard) {
  const auto peak = [](double db, int preampDb, int attenuatorDb) {
    RunBench bench;
    bench.State.Settings.BandLevelDb = db;
    static_cast<void>(bench.Cycle.Start());
    bench.State.Radio.PreampDb = preampDb;
    bench.State.Radio.AttenuatorDb = attenuatorDb;
    bench.Feed(6000);
    bench.Step();
    return bench.Sink.DisplayLevel[640];
  };
  const float plain = peak(0, 0, 0);
  // The window is one period of a quarter of the points, so a tone reaches amplitude * N / 4.
  EXPECT_NEAR(plain, 20 * std::log10(8000.0 * 1024 / 4) - 150 - 6 * (10 - 12), 0.1);
  EXPECT_NEAR(peak(7, 0, 0), plain + 7, 1e-3);
  EXPECT_NEAR(peak(0, 20, 6), plain - 14, 1e-3);
}

}  // namespace
}  // namespace spectrino
