// The simulated Icom against the program's own link and parser, and what it refuses.
#include <gtest/gtest.h>

#include <algorithm>

#include "civ/CivDoubles.h"
#include "civ/CivLink.h"
#include "fakes/FakeClock.h"
#include "fakes/Recorders.h"
#include "sim/icom/IcomRadio.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using enum IcomSimKind;
using test::Bytes;

/// A radio with a hand-cranked clock; what it says goes to the program as well.
struct Bench {
  explicit Bench(const IcomSimSetup& setup = {}) : Radio(setup, SimTime{}) {
    State.ControllerAddress = "E0";
    AppendHexText(State.RadioAddress, {{Radio.Model().Address}});
    EXPECT_EQ(Link.Open("/dev/radio"), "");
  }
  /// Hex text of all that is heard after a command.
  std::string Ask(const std::string& command) {
    Radio.Receive(Bytes("FEFE" + State.RadioAddress + "E0" + command + "FD"), Now);
    return Hear(20ms);
  }
  std::string Hear(std::chrono::milliseconds time) {
    std::string heard;
    for (const SimTime end = Now + time; Now < end; Now += 1ms) {
      const SimBytes sent = Radio.Transmit(Now);
      AppendHexText(heard, sent);
      Port.DataArrival(sent);
    }
    return heard;
  }
  IcomRadio Radio;
  SimTime Now{};
  test::FakeSerialPort Port;
  CivState State;
  test::RecordingPanel Panel;
  FakeClock Time;
  RecordingNotifier User;
  CivLink Link{Port, State, Panel, Time, User};
};

TEST(IcomSim, RefusesWhatItsModelRefuses) {
  const struct {
    IcomSimKind Model;
    const char *Before, *Command, *Reply;
  } rows[] = {{Ic7300, "", "050000004601", "FA"},  // 146 MHz: not received
              {Ic9700, "050000004601", "03", "030000004601"},
              {Ic7300, "", "05000A070700", "FA"},  // not BCD
              {Ic7610, "166501", "1665", "166501"},
              {Ic7610, "", "1112", "FB"},
              {Ic7300, "", "1112", "FA"},
              {Ic7300, "", "2715000026000000", "FA"},
              {Ic7300, "271900105001", "271900", "271900105001"},
              {Ic7300, "", "271401", "FA"},  // no sub receiver
              {Ic7300, "", "000000100700", ""},
              {Ic7300, "1800", "03", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Command) + " on " + std::string(IcomSimModelOf(row.Model).Option));
    Bench bench({.Model = row.Model});
    if (*row.Before != 0) (void)bench.Ask(row.Before);
    const std::string reply = row.Reply;
    EXPECT_EQ(bench.Ask(row.Command),
              reply.empty() ? "" : "FEFEE0" + bench.State.RadioAddress + reply + "FD");
  }
}

TEST(IcomSim, FindsItsFramesHoweverTheyArrive) {
  // Noise, somebody else's frame, one that breaks off, an empty one, one to everybody; two that count.
  const SimBytes stream = Bytes(
      "00FD FEFEFE94E003FD FEFE98E003FD FEFE94E00500 FEFE94E0FD FEFE00E003FD 12FE34 FEFE94E104FD FEFE94E0FD");
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    Bench bench;
    bench.Radio.Receive(SimByteView(stream).first(cut), bench.Now);
    bench.Radio.Receive(SimByteView(stream).subspan(cut), bench.Now);
    EXPECT_EQ(bench.Hear(20ms), "FEFEE094030040071400FDFEFEE194040101FD") << "cut at " << cut;
  }
}

TEST(IcomSim, TheProgramSeesItsBandWhereItIs) {
  struct Case {
    IcomSimKind Model;
    int Divisions;
    bool Fixed;
    double LowMHz, HighMHz;
  };
  for (const Case& c : {Case{Ic7300, 1, false, 14.024, 14.124}, Case{Ic7300, 11, false, 14.024, 14.124},
                        Case{Ic7300, 0, true, 14.05, 14.15}, Case{Ic7610, 0, true, 14.05, 14.15}}) {
    SCOPED_TRACE(testing::Message() << c.Divisions << " divisions, fixed " << c.Fixed);
    Bench bench({.Model = c.Model, .Divisions = c.Divisions});
    for (const char* command : {"1900", "05 00 40 07 14 00", "27 15 00 00 00 05 00 00", "27 19 00 05 50 00",
                                "27 1E 06 02 00 00 05 14 00 00 00 15 14 00", "27 16 00 02", "27 10 01"})
      (void)bench.Ask(command);
    (void)bench.Ask(c.Fixed ? "27140001" : "27140000");
    const double seconds = std::chrono::duration<double>(bench.Now - SimTime{}).count();
    (void)bench.Ask("271101");
    for (int ms = 0; ms < 150 && bench.State.ScopeSerial == 0; ++ms) (void)bench.Hear(1ms);
    ASSERT_EQ(bench.State.ScopeSerial, 1U);
    EXPECT_NEAR(bench.State.ScopeLineLowMHz, c.LowMHz, 1e-9);
    EXPECT_NEAR(bench.State.ScopeLineHighMHz, c.HighMHz, 1e-9);
    std::vector<double> dBm(static_cast<std::size_t>(bench.Radio.Model().ScopePoints));
    bench.Radio.Band().Render(c.LowMHz * 1e6, c.HighMHz * 1e6, seconds, dBm);
    ASSERT_EQ(bench.State.ScopeLevels.size(), dBm.size() + 1);
    // Half a dB a step up to 160, -133 dBm at the bottom, raised by the reference of 5.5 dB; rounded twice.
    for (std::size_t i = 0; i < dBm.size(); ++i)
      ASSERT_NEAR(bench.State.ScopeLevels[i + 1], std::clamp(2 * (dBm[i] + 133 + 5.5), 0.0, 160.0), 1) << i;
    // Switched off, only what had begun still arrives.
    (void)bench.Ask("271100");
    EXPECT_EQ(bench.Hear(200ms), "");
  }
}

}  // namespace
}  // namespace spectrino
