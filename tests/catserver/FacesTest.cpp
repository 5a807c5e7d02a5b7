// Requests as programs send them, and the whole answers; the forms are those of rigctld 4.5 and of the
// TS-2000.
#include <gtest/gtest.h>

#include <vector>

#include "catserver/CatBench.h"
#include "catserver/KenwoodFace.h"
#include "catserver/RigctldFace.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

struct Talk {
  std::string Sent;
  std::string Answered;
};

template <typename Face>
struct Line {
  CatBench Bench;
  std::string Out;
  std::vector<std::string> Told;
  Face Program{Bench.State,
               {.Send = [this](std::string_view bytes) { Out += bytes; },
                .Told =
                    [this](const CatWish& wish, CatResult result) {
                      Told.push_back(wish.Text() + " " + std::to_string(static_cast<int>(result)));
                    }}};
  bool Say(std::string_view text) { return Program.Feed(BytesOf(text)); }
};

/// Whole, split at every byte, and byte by byte: the same.
template <typename Face>
void Holds(
    const Talk& talk, void (*set)(CatBench&) = [](CatBench&) {}) {
  for (std::size_t cut = 0; cut <= talk.Sent.size(); ++cut) {
    Line<Face> line;
    set(line.Bench);
    if (line.Say(talk.Sent.substr(0, cut))) static_cast<void>(line.Say(talk.Sent.substr(cut)));
    ASSERT_EQ(line.Out, talk.Answered) << talk.Sent << " cut at " << cut;
  }
  Line<Face> line;
  set(line.Bench);
  for (const char c : talk.Sent) static_cast<void>(line.Say({&c, 1}));
  EXPECT_EQ(line.Out, talk.Answered) << talk.Sent;
}

TEST(Rigctld, EveryRequestHasItsWholeAnswerInBothForms) {
  const std::vector<Talk> talks{
      {"f\n", "14074000\n"},
      {"+f\n", "get_freq:\nFrequency: 14074000\nRPRT 0\n"},
      {";\\get_freq\r\n", "get_freq:;Frequency: 14074000;RPRT 0\n"},
      {"|m\n", "get_mode:|Mode: USB|Passband: 2700|RPRT 0\n"},
      {"fm\n", "14074000\nUSB\n2700\n"},
      {"F 14076000.000000\nf\n", "RPRT 0\n14076000\n"},
      {"+F 14076000\n", "set_freq: 14076000\nRPRT 0\n"},
      {"M CW 400\nm\n", "RPRT 0\nCW\n400\n"},
      {"+M PKTUSB -1\n+m\n",
       "set_mode: PKTUSB -1\nRPRT 0\nget_mode:\nMode: PKTUSB\nPassband: 2700\nRPRT 0\n"},
      {"M RTTY 0\nm\n", "RPRT 0\nRTTY\n2700\n"},
      {"M ?\n", "AM CW USB LSB RTTY FM CWR RTTYR PKTLSB PKTUSB \nRPRT 0\n"},
      {"V VFOB\nv\nf\nm\n", "RPRT 0\nVFOB\n14080000\nCW\n500\n"},
      {"S 1 VFOB\ns\ni\n+x\n",
       "RPRT 0\n1\nVFOB\n14080000\nget_split_mode:\nTX Mode: CW\nTX Passband: 500\nRPRT 0\n"},
      {"I 14081000\n+\\get_vfo_info VFOB\n",
       "RPRT 0\nget_vfo_info: VFOB\nFreq: 14081000\nMode: CW\nWidth: 500\n"
       "Split: 0\nSatMode: 0\nRPRT 0\n"},
      {"+s\n", "get_split_vfo:\nSplit: 0\nTX VFO: VFOA\nRPRT 0\n"},
      {"T 3\nt\nT 0\n+t\n", "RPRT 0\n1\nRPRT 0\nget_ptt:\nPTT: 0\nRPRT 0\n"},
      {"l STRENGTH\n+l CWPITCH\n", "-24\nget_level: CWPITCH\n600\nRPRT 0\n"},
      {"u MN\nU MN 1\nL AF 0.5\nu NB\n", "0\nRPRT -11\nRPRT -11\nRPRT -11\n"},
      {"\\chk_vfo\n+\\chk_vfo\n\\set_vfo_opt 1\n\\chk_vfo\n", "0\nChkVFO: 0\nRPRT 0\n1\n"},
      {"\\set_vfo_opt 1\nf VFOB\n+F VFOB 7000000\nm VFOA\nf\n",
       "RPRT 0\n14080000\nset_freq: VFOB 7000000\nRPRT 0\nUSB\n2700\nRPRT -1\n"},
      {"\\get_powerstat\n+\\get_vfo_list\n_\n", "1\nget_vfo_list:\nVFOs: VFOA VFOB \nRPRT 0\nSpectrino\n"},
      // Nonsense beside what is well-formed.
      {"F abc\nF -5\nF 1e99\nF nan\nF\nf\n", "RPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\n14074000\n"},
      {"M FOO 100\nM USB x\nT 7\nS 1 VFOA\nV FOO\nl FOO\nf\n",
       "RPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\n14074000\n"},
      {"\\foo 1 2\n+\\foo\nJ 10\n\x01\x02 f\n%\n\n# f\nf\n",
       "RPRT -11\nfoo:\nRPRT -11\nRPRT -11\nRPRT -1\nRPRT -1\n14074000\n"},
  };
  for (const Talk& talk : talks) Holds<RigctldFace>(talk);
  Holds<RigctldFace>({"f\nF 7000000\nt\n\\get_powerstat\n", "RPRT -11\nRPRT -11\nRPRT -11\nRPRT -11\n"},
                     [](CatBench& bench) { bench.There = false; });
  Holds<RigctldFace>({"f\nM USB 0\n\\get_powerstat\n", "RPRT -5\nRPRT -5\n0\n"},
                     [](CatBench& bench) { bench.Heard = false; });
  Holds<RigctldFace>({"V VFOB\nf VFOA\nI 7000000\nS 1 VFOB\nS 0 VFOA\n\\get_vfo_list\n",
                      "RPRT -11\n14074000\nRPRT -1\nRPRT -11\nRPRT -11\nRPRT 0\nVFOA \n"},
                     [](CatBench& bench) { bench.VfoB = false; });
  Holds<RigctldFace>({"T 1\nT 0\nt\n", "RPRT -9\nRPRT 0\n0\n"}, [](CatBench& bench) { bench.Ptt = false; });
}

TEST(Rigctld, AWishIsAnsweredWhenTheRadioTellsOrNot) {
  Line<RigctldFace> line;
  line.Bench.Obeys = false;
  ASSERT_TRUE(line.Say("+F 14076000\nf\n"));
  line.Bench.Clock.Advance(1999ms);
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(line.Out, "") << "nothing overtakes a wish";
  line.Bench.Told.MainFreqMHz = 14.07601;  // the nearest that this radio has
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(std::exchange(line.Out, {}), "set_freq: 14076000\nRPRT 0\n14076010\n");

  ASSERT_TRUE(line.Say("F 7000000\nf\n"));
  line.Bench.Clock.Advance(2000ms);
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(std::exchange(line.Out, {}), "RPRT -5\n14076010\n");

  // Another program wants it elsewhere: the first is not told that it failed.
  Line<RigctldFace> other;
  CatPending newer;
  ASSERT_TRUE(line.Say("F 7000000\n"));
  EXPECT_EQ(line.Bench.State.Ask({.Hz = 7.1e6}, newer), CatResult::Waiting);
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(std::exchange(line.Out, {}), "RPRT 0\n");

  ASSERT_TRUE(line.Say("M CWR 0\n"));
  line.Bench.Told.RadioMode = mode::kCw;  // all that some radios tell of it
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(line.Out, "");
  line.Bench.Clock.Advance(500ms);
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(std::exchange(line.Out, {}), "RPRT 0\n");

  ASSERT_TRUE(line.Say("T 1\n"));
  line.Bench.There = false;  // the run ended
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(line.Out, "RPRT -11\n");
  EXPECT_EQ(line.Told, (std::vector<std::string>{"set 14.076.000 1", "set 7.000.000 1", "set 7.000.000 1",
                                                 "set CWR 1", "transmits 1"}));
}

TEST(Rigctld, WhatIsNoClientIsLetGoOf) {
  Line<RigctldFace> line;
  EXPECT_FALSE(line.Say(std::string(1025, 'x')));
  Line<RigctldFace> whole;
  EXPECT_FALSE(whole.Say(std::string(2000, 'x') + "\n"));
  Line<RigctldFace> leaves;
  EXPECT_FALSE(leaves.Say("q\nf\n"));
  EXPECT_EQ(leaves.Out, "RPRT 0\n");
  Line<RigctldFace> floods;
  floods.Bench.Obeys = false;
  ASSERT_TRUE(floods.Say("F 7000000\n"));
  std::string many;
  for (int i = 0; i < 9000; ++i) many += "f\n";
  EXPECT_FALSE(floods.Say(many));
}

TEST(Kenwood, CommandsAsOnTheSerialLine) {
  const std::vector<Talk> talks{
      {"ID;PS;AI;FR;FT;", "ID019;PS1;AI0;FR0;FT0;"},
      {"FA;FB;MD;", "FA00014074000;FB00014080000;MD2;"},
      {"FA00014076000;FA;IF;", "FA00014076000;IF000140760000000+0000000000020000000;"},
      {"MD3;MD;FT1;FT;TX;IF;RX;IF;",
       "MD3;FT1;IF000140740000000+0000000000130010000;IF000140740000000+0000000000030010000;"},
      {"FA123;FAxxxxxxxxxxx;MDX;MD8;ZZ;PS0;TX9;;\r\nFA;", "?;?;?;?;?;?;?;FA00014074000;"},
      {std::string(100, 'A') + ";ID;", "?;ID019;"},
  };
  for (const Talk& talk : talks) Holds<KenwoodFace>(talk);
  Holds<KenwoodFace>({"FA;PS;FA00014076000;TX;ID;", "?;PS0;?;?;ID019;"},
                     [](CatBench& bench) { bench.There = false; });
  Holds<KenwoodFace>({"TX;IF;", "?;IF000140740000000+0000000000020000000;"},
                     [](CatBench& bench) { bench.Ptt = false; });

  Line<KenwoodFace> line;
  line.Bench.Obeys = false;
  ASSERT_TRUE(line.Say("AI2;FA00007000000;FA;"));
  EXPECT_EQ(line.Out, "");
  line.Bench.Clock.Advance(2s);
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(std::exchange(line.Out, {}), "?;FA00014074000;");
  line.Bench.Told.MainFreqMHz = 7;
  ASSERT_TRUE(line.Program.Tick());
  EXPECT_EQ(line.Out, "IF000070000000000+0000000000020000000;") << "told by itself";
}

}  // namespace
}  // namespace spectrino
