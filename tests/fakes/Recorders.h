// Records what the program tells its user and its display, and lets time pass without waiting.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fakes/FakeClock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "platform/WindowCommands.h"
#include "state/FrameSink.h"

namespace spectrino {

class RecordingNotifier final : public Notifier {
 public:
  using Notifier::ShowMessage;
  void ShowMessage(std::string_view title, std::string_view text, Severity, const Cure& cure) override {
    Messages.push_back(std::string(title) + "|" + std::string(text));
    Cures.push_back(cure);
  }
  void ShowStatus(std::string_view text) override { Statuses.emplace_back(text); }
  void Log(LogArea, std::string_view text) override { Logged.emplace_back(text); }

  std::vector<std::string> Messages;  // "title|text"
  std::vector<Cure> Cures;            // of the messages
  std::vector<std::string> Statuses;
  std::vector<std::string> Logged;
};

class RecordingSink final : public FrameSink {
 public:
  [[nodiscard]] double PlotWidth() const override { return 800; }
  void ShowFrame(const Frame& frame) override {
    ++Frames;
    Line = frame.Line;
    Colours = frame.Colours;
    Geometry = frame.Geometry;
    DisplayLevel.assign(frame.DisplayLevel.begin(), frame.DisplayLevel.end());
    BackgroundPeak.assign(frame.BackgroundPeak.begin(), frame.BackgroundPeak.end());
    NewestLevel.assign(frame.NewestLevel.begin(), frame.NewestLevel.end());
  }
  void DrawScale(const ScaleState& scale) override { Scale = scale; }
  void ClearFrames() override { ++Clears; }

  int Frames = 0;
  int Clears = 0;
  SpectrumLine Line;
  std::optional<LevelRange> Colours;
  FrameGeometry Geometry;
  ScaleState Scale;
  std::vector<float> DisplayLevel;
  std::vector<float> BackgroundPeak;
  std::vector<float> NewestLevel;
};

/// Waits by calling what the test wants to happen meanwhile; a clock that is handed in moves on.
class ScriptedPump final : public EventPump {
 public:
  explicit ScriptedPump(FakeClock* clock = nullptr) : clock_(clock) {}
  void Wait(std::chrono::milliseconds time) override {
    Waited += time;
    if (clock_ != nullptr) clock_->Advance(time);
    if (Meanwhile) Meanwhile();
  }

  std::chrono::milliseconds Waited{};
  std::function<void()> Meanwhile;

 private:
  FakeClock* clock_;
};

/// A window that writes down whether it was let stay on top.
struct RecordingWindow final : WindowCommands {
  void ToggleFullScreen() override {}
  void AlwaysOnTop(bool) override {}
  void AllowOnTop(bool allow) override { Tops.push_back(allow); }
  std::vector<bool> Tops;
};

}  // namespace spectrino
