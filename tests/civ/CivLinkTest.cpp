// The link between a serial port and the program: what is written when, and what of a stream is understood.
#include "civ/CivLink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "civ/IcomBench.h"

namespace spectrino::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

struct CivLinkTest : CivBench {
  CivLinkTest() {
    State.RadioAddress = "94";
    State.ControllerAddress = "E0";
    EXPECT_EQ(Link.Open("/dev/radio"), "");
  }
  CivLink Link{Port, State, Panel, Time, User};
};

TEST_F(CivLinkTest, FramesLeaveInOrderTenMillisecondsApart) {
  Link.SendCiv("16", "12", "02");
  Link.SendCiv("14", "01", "0128");
  Link.SendCiv("14", "01", "0129");
  Link.SendCiv("19", "00", "?");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E0161202FD"));
  EXPECT_THAT(Sent(Link, 9ms), IsEmpty());
  EXPECT_THAT(Sent(Link, 1ms), ElementsAre("FEFE94E014010128FD"));
  EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFE94E014010129FD", "FEFE94E01900FD"));
  Link.SendCiv("07", "", "");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E007FD"));  // nothing waits: at once
}

TEST_F(CivLinkTest, WhateverAMacroHoldsIsOneFrame) {
  const std::pair<std::string, std::string> macros[] = {{"160201", "160201"},
                                                        {"16020", "1602"},
                                                        {"", ""},
                                                        {"1", ""},
                                                        {"16 zz\x01", "160000"},
                                                        {std::string(10001, '7'), std::string(10000, '7')}};
  for (const auto& [text, body] : macros) {
    Link.SendCiv(text, {}, {});
    EXPECT_THAT(Sent(Link, 20ms), ElementsAre("FEFE94E0" + body + "FD"));
  }
}

TEST_F(CivLinkTest, ATurningWheelSendsItsNewestFrequencyAndAsksOnce) {
  for (const char* bcd : {"0040071400", "0041071400", "0042071400", "0043071400"}) {
    Link.SendFrequency(bcd);
    Link.RequestIcomStatus();
  }
  EXPECT_THAT(Sent(Link, 200ms),
              ElementsAre("FEFE94E0050040071400FD", "FEFE94E0050043071400FD", "FEFE94E003FD", "FEFE94E004FD",
                          "FEFE94E01401FD", "FEFE94E01403FD", "FEFE94E0271400FD", "FEFE94E0271A00FD",
                          "FEFE94E0271900FD"));
}

TEST_F(CivLinkTest, ClosingWritesWhatWaitsButAsksNoMore) {
  Link.SendCiv("07", "", "");
  Link.RequestIcomStatus();
  Link.SendCiv("27", "11", "00");
  Link.Close();
  Link.SendCiv("08", "", "");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E007FD")) << "nobody waited";
  EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFE94E0271100FD"));
  EXPECT_FALSE(Port.IsOpen());
}

// Each frame told apart by what it changes; noise and other stations between them.
constexpr const char* kStream =
    "12 FD FE 94 FD"                        // noise with ends of message
    "FE FE 94 E0 14 01 00 11 FD"            // our own echo
    "FE FE E0 94 03 00 00 23 14 00 FD"      // 14.23 MHz
    "0F D0"                                 // FD across the byte boundary: half a byte is left
    "FE FE E0 94 14 03 00 99 FD"            // squelch
    "FE FE E0 76 14 01 00 22 FD"            // another radio
    "FE FE E0 94 FB FD 00"                  // acknowledged, and a stray zero
    "FE FE E0 94 14 01 01 28 FD FE FE E0";  // AF level, and a frame that has only begun

TEST_F(CivLinkTest, AStreamMeansTheSameHoweverItIsCut) {
  const auto stream = Bytes(kStream);
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    State.RadioFreqMHz = State.AfLevel = State.SqlLevel = 0;
    Panel.Told.clear();
    const std::span<const std::uint8_t> whole(stream);
    Port.DataArrival(whole.first(cut));
    // The first round goes byte by byte.
    for (std::size_t at = cut; at < stream.size(); at += cut == 0 ? 1 : stream.size()) {
      Port.DataArrival(cut == 0 ? whole.subspan(at, 1) : whole.subspan(at));
    }
    EXPECT_EQ(State.RadioFreqMHz, 14.23) << cut;
    EXPECT_EQ(Panel.Told, "squelch 99; af 128; ") << cut;
  }
}

TEST_F(CivLinkTest, NoiseWithoutAnEndIsDroppedBeforeItFillsTheMemory) {
  const std::vector<std::uint8_t> noise(CivRxBuffer::kMaxText / 4, 0xA5);
  Port.DataArrival(Bytes("FE FE E0 94 03"));
  for (int i = 0; i < 8; ++i) Port.DataArrival(noise);
  EXPECT_THAT(User.Logged, ElementsAre(HasSubstr("64 KiB")));
  Port.DataArrival(Bytes("FE FE E0 94 03 00 00 23 14 00 FD"));
  EXPECT_EQ(State.RadioFreqMHz, 14.23);
}

}  // namespace
}  // namespace spectrino::test
