// A session with everything around it scripted: sockets that write down what they are told, a clock that only
// waiting moves, a dialog that answers from a list.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "k4/K4Session.h"

namespace spectrino::test {

using Log = std::vector<std::string>;

class ScriptedSocket final : public ByteSocket {
 public:
  ScriptedSocket(std::string name, Log& log) : name_(std::move(name)), log_(log) {}
  void Connect(const std::string& host, std::uint16_t port) override {
    log_.push_back(name_ + " connect " + host + ":" + std::to_string(port));
    Connecting = true;
  }
  void Close() override {
    log_.push_back(name_ + " close");
    Connecting = false;
  }
  void Send(std::string_view bytes) override { log_.push_back(name_ + " " + std::string(bytes)); }

  void Receive(std::string_view text) {
    DataArrival({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }
  /// What the event loop finds at its next turn.
  void Answer(bool accepts) {
    if (!Connecting) return;
    Connecting = false;
    accepts ? Connected() : Error("refused");
  }
  bool Connecting = false;

 private:
  std::string name_;
  Log& log_;
};

struct RecordingView final : K4SessionView {
  explicit RecordingView(Log& log) : Events(log) {}
  void TickMinipan() override { MinipanTicked = true; }
  void SelectSpanPreset(int index) override { SpanPreset = index; }
  void ClearBset() override { BsetCleared = true; }
  [[nodiscard]] bool SubTicked() const override { return Sub; }
  void ShowWaiting(bool waiting) override { Waiting = waiting; }
  void AllowAlwaysOnTop(bool allow) override { Events.push_back(allow ? "on top" : "not on top"); }

  Log& Events;
  bool MinipanTicked = false, BsetCleared = false, Sub = false, Waiting = false;
  int SpanPreset = 0;
};

struct ListedAnswers final : K4RetryDialog {
  explicit ListedAnswers(Log& log) : Events(log) {}
  std::optional<K4ConnectTexts> Ask(const std::string& message, const K4ConnectTexts& shown) override {
    Events.push_back("dialog: " + message);
    Shown.push_back(shown);
    if (Answers.empty()) return std::nullopt;
    K4ConnectTexts answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  Log& Events;
  std::deque<K4ConnectTexts> Answers;
  std::vector<K4ConnectTexts> Shown;
};

struct SessionBench {
  K4State State;
  Log Events;  // of sockets, dialog and window, in order
  ScriptedSocket WSCat{"CAT", Events};
  ScriptedSocket WSPan{"PAN", Events};
  MemorySettingsFile File;
  RecordingNotifier User;
  FakeClock Time;
  ScriptedPump Pump{&Time};
  SettingsStore Store{File, User, Time};
  RecordingView View{Events};
  ListedAnswers Retry{Events};
  std::vector<std::string> Replies;  // what the parser was given
  bool GivenUp = false;
  std::unique_ptr<K4Session> Session = std::make_unique<K4Session>(
      K4SessionParts{State, WSCat, WSPan, Store, View, Retry, User, Pump, Time,
                     [this](std::string& buffer) {
                       Replies.push_back(buffer);
                       const std::size_t end = buffer.rfind(';');
                       buffer.erase(0, end == std::string::npos ? 0 : end + 1);
                     },
                     [this](int which) { Events.push_back("monitor " + std::to_string(which)); },
                     [this] { return GivenUp; }});

  void Setting(std::string_view key, std::string_view value) {
    Store.SaveSetting("Spectrino", "Setup", key, value);
  }
  [[nodiscard]] std::string Setting(std::string_view key) {
    return Store.GetSetting("Spectrino", "Setup", key, "(none)");
  }
  /// From now on the radio accepts or refuses at once; before, it is silent.
  void RadioAnswers(bool cat, bool pan) {
    Pump.Meanwhile = [this, cat, pan] {
      WSPan.Answer(pan);
      WSCat.Answer(cat);
    };
  }
  /// Connected and running, with nothing in Events.
  void BeginSession() {
    Setting("K4TCP", "k4.local");
    RadioAnswers(true, true);
    static_cast<void>(Session->Start());
    Events.clear();
    User.Statuses.clear();
  }
  [[nodiscard]] Log Take() { return std::exchange(Events, {}); }
};

}  // namespace spectrino::test
