// A panel that writes down how it was moved, and a sender that writes down what was sent.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "k4/K4Commands.h"

namespace spectrino {

class RecordingPanel final : public K4PanelView {
 public:
  void SetCheck(K4Check check, bool ticked) override {
    if (check == K4Check::Sub) Sub = ticked;
    Moved("check " + std::to_string(static_cast<int>(check)) + " " + (ticked ? "1" : "0"));
    if (Checked) Checked(check, ticked);
  }
  [[nodiscard]] bool SubTicked() const override { return Sub; }
  void SetFilterCaption(int receiver, const std::string& caption) override {
    Moved("filter " + std::to_string(receiver) + " " + caption);
  }
  void SetVolume(int index, int value) override {
    Moved("volume " + std::to_string(index) + " " + std::to_string(value));
  }
  void SetVolumeToolTip(const std::string& text) override { Moved("tip " + text); }
  [[nodiscard]] int Notch() const override { return notch_; }
  void SetNotch(int value) override {
    notch_ = value;
    Moved("notch " + std::to_string(value));
  }
  void SetNotchToolTip(const std::string& text) override { Moved("tip " + text); }

  std::vector<std::string> Moves;
  bool Sub = false;
  std::function<void()> WhenMoved;
  std::function<void(K4Check, bool)> Checked;

 private:
  void Moved(std::string text) {
    Moves.push_back(std::move(text));
    if (WhenMoved) WhenMoved();
  }
  int notch_ = 0;
};

/// Adds ";" as the session does; lines of the panadapter connection stand behind "pan ".
class RecordingSender final : public K4Sender {
 public:
  explicit RecordingSender(const K4State& state) : state_(state) {}
  void SendK4(std::string_view command) override {
    if (!state_.K4Connected) return;
    Sent.emplace_back(command);
    if (!Sent.back().ends_with(';')) Sent.back() += ';';
  }
  void SendCat(std::string_view text) override { Sent.emplace_back(text); }
  void SendPan(std::string_view line) override { Sent.push_back("pan " + std::string(line)); }

  std::vector<std::string> Sent;

 private:
  const K4State& state_;
};

/// The commands on a table; checks that the parser writes reach their handlers, which must not answer.
struct PanelBench {
  explicit PanelBench(K4State& state) : State(state), Sender(state) {
    Pump.Meanwhile = [this] {
      Sender.Sent.push_back(std::to_string((Pump.Waited - waited_).count()) + "ms");
      waited_ = Pump.Waited;
    };
    Panel.Checked = [this](K4Check check, bool on) {
      void (K4Commands::*const handlers[])(bool) = {&K4Commands::chkSplt_Click, &K4Commands::chkBSET_Click,
                                                    &K4Commands::chkSub_Click,  &K4Commands::chkDIV_Click,
                                                    &K4Commands::chkIIR_Click,  &K4Commands::chkFXT_Click};
      (Commands.*handlers[static_cast<int>(check)])(on);
    };
  }

  K4State& State;
  RecordingSender Sender;
  RecordingPanel Panel;
  MemorySettingsFile File;
  RecordingNotifier User;
  SettingsStore Store{File, User};
  ScriptedPump Pump;
  FakeClock Time;
  K4Dial Dial{Sender, Time};
  K4Commands Commands{State, Sender, Dial, Panel, Store, Pump};

  /// What went out since the last call, in order: commands, lines behind "pan ", pauses as "200ms".
  [[nodiscard]] std::string Log() {
    std::string log;
    for (const std::string& entry : Sender.Sent) log += (log.empty() ? "" : " ") + entry;
    Sender.Sent.clear();
    return log;
  }

 private:
  std::chrono::milliseconds waited_{};
};

}  // namespace spectrino
