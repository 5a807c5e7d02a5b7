// Each operation by its bytes, and what each CAT control makes of what the radio and other programs tell.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostBench.h"
#include "host/PanBackend.h"

namespace spectrino {
namespace {

using test::HostBench;
using test::kDump;
using test::VfoInfo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

TEST(HostRadio, OperationsAreTheseLines) {
  const std::string icom = "dump_caps:\nMfg name:\tIcom\nHas targetable VFO: Y\n";
  using B = HostBackend&;
  const struct {
    const char* Mode;
    std::string Caps;
    void (*Ask)(B);
    const char* Sent;  // null: nothing
  } cases[] = {
      {"USB", kDump, [](B b) { b.SetFrequency(Vfo::A, 14.02551, Aim::Dial); }, "set_freq VFOA 14025510"},
      {"USB", kDump,
       [](B b) {
         b.SelectMode({2, true});
       },
       "set_mode VFOA CWR -1"},
      {"USB", kDump,
       [](B b) {
         b.SelectMode({2, false});
       },
       "set_mode VFOA CW -1"},
      {"RTTY", kDump,
       [](B b) {
         b.SelectMode({5, true});
       },
       "set_mode VFOA RTTYR -1"},
      {"PKTUSB", kDump,
       [](B b) {
         b.SelectMode({5, true});
       },
       "set_mode VFOA PKTLSB -1"},
      {"USB", kDump,
       [](B b) {
         b.SelectMode({6, false});
       },
       "set_mode VFOA AM -1"},
      {"USB", kDump,
       [](B b) {
         b.SelectMode({9, false});
       },
       nullptr},
      {"USB", kDump, [](B b) { b.SelectBand(5); }, nullptr},  // is there
      {"USB", kDump, [](B b) { b.SelectBand(3); }, "set_freq VFOA 7150000"},
      {"USB", kDump, [](B b) { b.SendMacro("FB00007050000;"); }, "set_freq VFOB 7050000"},
      {"USB", kDump, [](B b) { b.SendMacro("KY CQ\nF 1;"); }, "send_cmd KY CQ F 1;"},
      {"USB", icom, [](B b) { b.SendMacro("FA00014025500;"); }, "set_freq VFOA 14025500"},
      {"USB", icom, [](B b) { b.SendMacro("1602"); },
       "send_cmd_rx \\0xFE\\0xFE\\0x94\\0xE1\\0x16\\0x02\\0xFD 6"},
      {"USB", icom, [](B b) { b.SendMacro("1602 1"); }, nullptr},
      {"USB", icom, [](B b) { b.SendMacro("KY CQ;"); }, nullptr},  // it knows no text
  };
  for (const auto& at : cases) {
    HostBench bench;
    bench.Store.SaveSetting("Spectrino", "Setup", "ICADDR", "94 ");
    bench.Store.SaveSetting("Spectrino", "Setup", "CTRLADDR", " E1 ");
    bench.Begin(CatControl::HostIf, at.Mode, at.Caps);
    at.Ask(bench.Backend);
    std::vector<std::string> sent;
    if (at.Sent != nullptr) sent.push_back("+\\" + std::string(at.Sent) + "\n");
    EXPECT_EQ(bench.TakeSent(), sent);
  }
}

TEST(HostRadio, AnIcomIsAddressedAsItsModelIsAndBySetupWhereNobodyKnowsThat) {
  const std::string model = "dump_caps:\nMfg name:\tIcom\nModel name: ";
  HostBench bench;
  bench.Store.SaveSetting("Spectrino", "Setup", "ICADDR", "94");
  bench.Store.SaveSetting("Spectrino", "Setup", "CTRLADDR", "x");
  bench.Begin(CatControl::FixedLo, "USB", model + "IC-7610\n");
  const auto sent = [&] {
    bench.Socket.Sent.clear();
    bench.Backend.SendMacro("1602");
    bench.Socket.Receive("send_cmd_rx:\nRPRT 0\n");
    const auto lines = bench.TakeSent();
    return lines.empty() ? "" : lines.front();
  };
  bench.Radio.SetUsualAddress("98");
  EXPECT_THAT(sent(), testing::HasSubstr("\\0xFE\\0x98\\0xE0\\0x16")) << "94 was an earlier radio's";
  for (const auto& [name, address] : {std::pair("IC-7610", "98"), {"IC-718", "94"}}) {
    bench.Socket.Closed();
    bench.Pass(1s);
    bench.Accept(model + name + "\n");
    EXPECT_THAT(sent(), testing::HasSubstr(std::string("\\0xFE\\0x") + address)) << name;
  }
}

TEST(HostBackend, AMacroIsNotSentBeforeTheKindOfRadioIsKnown) {
  HostBench bench;
  bench.Backend.FollowLater();
  bench.Socket.Connected();
  bench.Backend.SendMacro("1602");
  EXPECT_EQ(bench.User.Statuses.size(), 1U);
  bench.Accept("dump_caps:\nMfg name:\tIcom\n");
  for (const std::string& sent : bench.Socket.Sent) EXPECT_EQ(sent.find("1602"), std::string::npos) << sent;
}

TEST(HostRadio, ABandIsFoundAsItWasLeft) {
  HostBench bench;
  bench.Store.SaveSetting("Bexmora", "BandDecoder", "Split80", "1");
  bench.Begin(CatControl::HostIf, "CW");
  EXPECT_EQ(bench.Radio.HostGetBand(), 6) << "20 m is one further on where 80 m has two";
  bench.Backend.SelectBand(3);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_freq VFOA 3800000\n"));
  bench.Socket.Receive("RPRT 0\nset_freq:\nRPRT 0\n");
  bench.Answer(VfoInfo("VFOA", 3801000, "LSB"));
  bench.Socket.Sent.clear();
  bench.Backend.SelectBand(6);
  bench.Socket.Receive("set_freq:\nRPRT 0\n");
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_freq VFOA 14074000\n", "+\\set_mode VFOA CW -1\n"));
}

/// A radio takes the nearest width that it has and tells that: steps count on from what was asked.
TEST(HostBackend, AFilterIsSetAsFarAsTheRadioLets) {
  const std::string caps =
      "dump_caps:\nHas targetable VFO: Y\nCan set Mode:\tY\nGet level: IF(1)\nSet level: IF(1)\n";
  HostBench bench;
  bench.Begin(CatControl::HostIf, "PKTUSB", caps);
  bench.Answer(VfoInfo("VFOA", 14074000, "PKTUSB", 1));
  bench.Answer("get_level:\n0\nRPRT 0\n");
  bench.Socket.Sent.clear();
  HostBackend& backend = bench.Backend;
  EXPECT_TRUE(backend.FilterReachOf(Vfo::A).Width && backend.FilterReachOf(Vfo::A).Shift);
  EXPECT_FALSE(backend.FilterReachOf(Vfo::B).Width) << "this CAT control shows no width of it";
  backend.ChangeBandwidth(Vfo::A, 40);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_mode VFOA PKTUSB 2440\n"));
  bench.Socket.Receive("set_mode:\nRPRT 0\n");
  bench.Answer(VfoInfo("VFOA", 14074000, "PKTUSB", 1));
  bench.Socket.Sent.clear();
  backend.ChangeBandwidth(Vfo::A, 40);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_mode VFOA PKTUSB 2480\n")) << "told is 2400";
  bench.Socket.Receive("set_mode:\nRPRT 0\n");
  backend.ShiftPassband(Vfo::A, -30);
  backend.ChangeBandwidth(Vfo::B, 40);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_level VFOA IF -30\n"));
  bench.Socket.Receive("set_level:\nRPRT 0\n");
  backend.SelectMode({2, false});
  EXPECT_FALSE(backend.FilterReachOf(Vfo::A).Width) << "the width of which mode?";

  HostBench told;
  told.Begin(CatControl::HostIf, "USB");
  told.Backend.ChangeBandwidth(Vfo::A, 40);
  told.Backend.ShiftPassband(Vfo::A, 40);
  EXPECT_FALSE(told.Backend.FilterReachOf(Vfo::A).Width);
  EXPECT_THAT(told.TakeSent(), IsEmpty()) << "it sets no mode";
}

TEST(HostBackend, AClickOnFskIsCorrectedAndNothingElseIs) {
  const struct {
    const char *Mode, *Co, *Fsk;
    Aim What;
    const char* Sent;
  } cases[] = {
      {"RTTY", "1", "0", Aim::Signal, "14079915"}, {"RTTYR", "1", "0", Aim::Signal, "14080085"},
      {"RTTY", "1", "0", Aim::Dial, "14080000"},   {"RTTY", "0", "0", Aim::Signal, "14080000"},
      {"RTTY", "1", "1", Aim::Signal, "14080000"}, {"USB", "1", "0", Aim::Signal, "14080000"},
  };
  for (const auto& at : cases) {
    HostBench bench;
    bench.Pan("Bexmora", "CO", at.Co);
    bench.Pan("Bexmora", "FSK", at.Fsk);
    bench.Pan("Bexmora", "SHIFT", "170");
    bench.Begin(CatControl::HostIf, at.Mode);
    bench.Backend.SetFrequency(Vfo::A, 14.08, at.What);
    EXPECT_THAT(bench.TakeSent(), ElementsAre(std::string("+\\set_freq VFOA ") + at.Sent + "\n")) << at.Mode;
  }
}

TEST(PanKeys, EachCatControlReadsItsKeysAndNoOthers) {
  const std::string k3 = "FB MD MD$ FI IS FW FW$ PITCH PRE ATT FSK CO SHIFT ";
  const std::string ketrel = "FA FB MD MD2 FI IS FW FW2 PI FT PRE ATT SHIFT ";
  // The rest comes by the bus.
  const std::string bridge = "MD MD2 PI FT PRE ATT FSK CO SHIFT ";
  const std::string adapter = "FB IFS FW PITCH PRE ATT FSK CO SHIFT ";
  const std::string expected[] = {adapter, "", k3, bridge, "FA MD ", ketrel, "FA MD ", "", adapter};
  for (int number = 0; number <= 8; ++number) {
    const auto control = static_cast<CatControl>(number);
    HostBench none;
    std::string keys;
    for (const std::string_view key : PanKeysOf(control)) {
      keys += std::string(key) + ' ';
      HostBench one;
      one.Pan(PanApplication(control), key, " 7.5x");
      EXPECT_NE(ReadPan(one.Store, control), ReadPan(none.Store, control)) << number << ' ' << key;
    }
    EXPECT_EQ(keys, expected[number]) << number;
    EXPECT_EQ(ReadPan(none.Store, control), PanValues{.PitchHz = 600}) << number;
  }
}

TEST(HostBackend, WhatTheRadioTellsIsPublishedAndBeatsTheFile) {
  const std::string caps =
      "dump_caps:\nHas targetable VFO: Y\nGet level: PREAMP(1) ATT(1) CWPITCH(1) IF(1)\nCan get PTT: Y\n";
  HostBench bench;
  bench.Pan("Bexmora", "FB", "7000000");
  bench.Pan("Bexmora", "FI", "250");
  bench.Begin(CatControl::HostK3If, "CW", caps);
  const std::string answers[] = {"get_ptt:\nPTT: 1\nRPRT 0\n", "get_level:\n10\nRPRT 0\n",
                                 "get_level:\n18\nRPRT 0\n", "get_level:\n650\nRPRT 0\n",
                                 "get_level:\n0\nRPRT -11\n"};
  for (const std::string& answer : answers) {
    bench.Answer(VfoInfo("VFOA", 14074000, "CW", 1));
    bench.Answer(answer);
  }
  bench.Backend.Refresh(bench.State);
  EXPECT_DOUBLE_EQ(bench.State.SubFreqMHz, 14.08);
  EXPECT_EQ(bench.State.PitchHz, 650);
  EXPECT_EQ(bench.State.AttenuatorDb - bench.State.PreampDb, 8);
  EXPECT_EQ(bench.State.MainBandwidthHz, 2400);
  EXPECT_EQ(bench.State.SubRadioMode, mode::kCw);
  EXPECT_TRUE(bench.State.Transmitting);
  EXPECT_EQ(bench.State.SplitOn, 1);
  EXPECT_DOUBLE_EQ(bench.Backend.LinkOffsetKHz(), 0.25);
  const std::uint64_t serial = bench.Radio.State().Serial;
  bench.Answer(VfoInfo("VFOA", 14074000, "CW", 1));
  EXPECT_EQ(bench.Radio.State().Serial, serial) << "told once more, not changed";
  bench.Backend.SetFrequency(Vfo::B, 14.074, Aim::Dial);
  bench.Backend.Refresh(bench.State);
  EXPECT_EQ(bench.State.SplitOn, 0) << "equal frequencies";
  bench.Socket.Receive("set_freq:\nRPRT 0\n");
  bench.Socket.Closed();
  bench.Pass(1s);
  bench.Accept(caps);
  bench.Backend.Refresh(bench.State);
  EXPECT_FALSE(bench.State.Transmitting) << "nobody told that since it is back";
  EXPECT_EQ(bench.Radio.HostGetFrequency(Vfo::B), 0) << "it may be another radio";
  EXPECT_EQ(bench.Radio.HostGetSplit(), 0);
  EXPECT_DOUBLE_EQ(bench.State.MainFreqMHz, 14.074) << "the plot stays until it is read";
  bench.Answer("get_vfo_info: VFOA\nRPRT -11\n");
  bench.Answer(VfoInfo("VFOB", 7000000, "LSB"));
  bench.Backend.Refresh(bench.State);
  EXPECT_EQ(bench.State.MainFreqMHz, 0) << "a radio that answers and does not tell";
  bench.Backend.Close();
  EXPECT_EQ(bench.Store.GetSetting("Bexmora", "PAN", "FB", ""), "7000000") << "the file's again";
}

TEST(PanBackend, KetrelIsFollowedAndToldEachClick) {
  HostBench bench;
  bench.Settings.Control = CatControl::KetrelIf;
  bench.File.Files["Ketrel"] = "[PAN]\nFA=14.074\nFB=14.08\nMD=3\nFI=-300\nIS=650\nPI=600\nFT=1\nPRE=12\n";
  PanBackend backend(bench.Store, bench.Settings, bench.Time);
  backend.Open();
  RadioState radio;
  backend.Refresh(radio);
  EXPECT_DOUBLE_EQ(radio.MainFreqMHz, 14.074);
  EXPECT_DOUBLE_EQ(radio.SubFreqMHz, 14.08);
  EXPECT_EQ(radio.RadioMode, mode::kCw);
  EXPECT_EQ(radio.SplitOn, 1);
  EXPECT_EQ(radio.PreampDb, 12);
  EXPECT_DOUBLE_EQ(radio.MainShiftHz, 50);
  EXPECT_DOUBLE_EQ(backend.LinkOffsetKHz(), -0.3);

  const auto written = [&] { return bench.File.Stamp("Ketrel"); };
  for (int click = 0; click < 2; ++click) {
    const auto before = written();
    backend.SetFrequency(Vfo::A, 14.0255, Aim::Signal);
    EXPECT_NE(written(), before) << "a command each time";
    EXPECT_EQ(bench.Store.GetSetting("Ketrel", "PAN", "RXFreq", ""), "14.0255");
  }
  backend.SetFrequency(Vfo::B, 14.2, Aim::Signal);
  EXPECT_EQ(bench.Store.GetSetting("Ketrel", "PAN", "TXFreq", ""), "14.2");
  backend.Refresh(radio);
  EXPECT_DOUBLE_EQ(radio.MainFreqMHz, 14.0255) << "at once";
  bench.Time.Advance(100ms);
  bench.Pan("Ketrel", "FA", "14.0254");
  backend.Refresh(radio);
  EXPECT_DOUBLE_EQ(radio.MainFreqMHz, 14.0255) << "it may be what was asked before";
  bench.Time.Advance(2100ms);
  backend.Refresh(radio);
  EXPECT_DOUBLE_EQ(radio.MainFreqMHz, 14.0254) << "what Ketrel made of it";
  EXPECT_DOUBLE_EQ(radio.SubFreqMHz, 14.08) << "never taken up";
}

}  // namespace
}  // namespace spectrino
