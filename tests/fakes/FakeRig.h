// A back-end, a radio with a scope of its own and a kit made of both, all moved by the test.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "rig/RadioKit.h"

namespace spectrino {

class FakeRig final : public RigBackend {
 public:
  bool Open() override {
    ++Opens;
    if (Opening) Opening();
    return Found;
  }
  void Close() override { ++Closes; }
  void Refresh(RadioState& radio) override {
    ++Refreshes;
    radio.MainFreqMHz = FreqMHz;
    radio.RadioMode = Mode;
  }
  [[nodiscard]] double LinkOffsetKHz() const override { return Offset; }
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override {
    Note((vfo == Vfo::A ? "A " : "B ") + std::to_string(freqMHz) + (aim == Aim::Signal ? " signal" : ""));
  }
  void RememberBand() override { Note("remember"); }
  void SelectBand(int button) override { Note("band " + std::to_string(button)); }
  bool SelectMode(const ModeRequest& request) override {
    if (!Modes) return false;
    Note("mode " + std::to_string(request.Button) + (request.Reverse ? " reverse" : ""));
    return true;
  }
  void SendMacro(std::string_view text) override { Note("macro " + std::string(text)); }
  [[nodiscard]] FilterReach FilterReachOf(Vfo) const override { return Reach; }
  void ChangeBandwidth(Vfo receiver, int deltaHz) override {
    Note(std::string("bandwidth ") + (receiver == Vfo::A ? "A " : "B ") + std::to_string(deltaHz));
  }
  void ShiftPassband(Vfo receiver, int deltaHz) override {
    Note(std::string("shift ") + (receiver == Vfo::A ? "A " : "B ") + std::to_string(deltaHz));
  }
  void StepSpan(int direction) override { Note("span " + std::to_string(direction)); }
  void StepFrequency(int direction, double centreMHz) override {
    Note("step " + std::to_string(direction) + " from " + std::to_string(centreMHz));
  }

  bool Found = true;
  std::function<void()> Opening;  ///< happens meanwhile
  double FreqMHz = 0;
  int Mode = mode::kUsb;
  double Offset = 0;
  int Opens = 0;
  int Closes = 0;
  int Refreshes = 0;
  bool Modes = true;
  FilterReach Reach{.Width = true, .Shift = true};
  std::vector<std::string> Requests;  ///< everything that was asked of it, in order

 private:
  void Note(std::string request) { Requests.push_back(std::move(request)); }
};

class FakeScope final : public RadioLink, public SpectrumSource {
 public:
  bool Open() override { return Accepts; }
  void TellBeside(RadioState& radio) const override {
    radio.SMeterTold = true;
    radio.SMeterDbm = BesideDbm;
  }
  [[nodiscard]] bool Paused() const override { return Pauses; }
  void Close() override { ++Closes; }
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  [[nodiscard]] LevelScale Scale() const override { return Levels; }
  [[nodiscard]] std::array<double, 21> GridHz() const override {
    std::array<double, 21> grid{};
    for (std::size_t i = 0; i < grid.size(); ++i) grid[i] = 5000.0 * static_cast<double>(i);
    return grid;
  }
  /// An antenna 30 dB above the line.
  [[nodiscard]] float AntennaDbm(float level) const override { return level + 30; }
  PollResult Poll(const LineRequest&, SpectrumLine& line) override {
    if (!Ready) return PollResult::Pending;
    Ready = false;
    line = Next;
    return PollResult::Line;
  }
  [[nodiscard]] std::string Failure() const override { return {}; }

  LevelScale Levels{-140, -40, 100, 20};
  bool Accepts = true;
  bool Pauses = false;
  double BesideDbm = 0;
  bool Ready = false;
  int Closes = 0;
  SpectrumLine Next;
};

struct FakeKit final : RadioKit {
  FakeKit() = default;
  /// Of a radio that delivers the spectrum of these sources.
  explicit FakeKit(std::vector<SourceKind> kinds) {
    for (const SourceKind kind : kinds) Rows.push_back({kind, "radio"});
  }
  /// Of a program that carries these ways.
  explicit FakeKit(std::vector<CatWay> ways) : Ways(std::move(ways)) {}

  RigBackend& Backend() override { return Rig; }
  [[nodiscard]] const RadioTraits& Traits() const override { return Has; }
  [[nodiscard]] LinkHealth Health() const override { return How; }
  RadioLink* Link() override { return Rows.empty() ? nullptr : &Scope; }
  [[nodiscard]] std::span<const RadioSource> Sources() const override { return Rows; }
  [[nodiscard]] bool Carries(CatWay way) const override {
    return std::find(Ways.begin(), Ways.end(), way) != Ways.end();
  }

  std::vector<RadioSource> Rows;
  std::vector<CatWay> Ways;
  LinkHealth How{.State = LinkState::Live};
  RadioTraits Has;
  FakeRig Rig;
  FakeScope Scope;
};

}  // namespace spectrino
