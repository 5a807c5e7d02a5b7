// A back-end and a radio with a scope of its own, both moved by the test.
#pragma once

#include <string>
#include <vector>

#include "rig/RadioLink.h"
#include "rig/RigBackend.h"

namespace spectrino {

class FakeRig final : public RigBackend {
 public:
  bool Open() override {
    ++Opens;
    return Found;
  }
  void Close() override { ++Closes; }
  void Refresh(RadioState& radio) override {
    ++Refreshes;
    radio.MainFreqMHz = FreqMHz;
    radio.RadioMode = Mode;
  }
  [[nodiscard]] double LinkOffsetKHz() const override { return Offset; }
  void SetFrequency(Vfo vfo, double freqMHz) override {
    Note((vfo == Vfo::A ? "A " : "B ") + std::to_string(freqMHz));
  }
  [[nodiscard]] bool HasVfoB() const override { return VfoB; }
  void RememberBand() override { Note("remember"); }
  void SelectBand(int button) override { Note("band " + std::to_string(button)); }
  bool SelectMode(const ModeRequest& request) override {
    if (!Modes) return false;
    Note("mode " + std::to_string(request.Button) + (request.Reverse ? " reverse" : ""));
    return true;
  }
  void SendMacro(std::string_view text) override { Note("macro " + std::string(text)); }
  void ChangeBandwidth(Vfo receiver, int deltaHz) override {
    Note(std::string("bandwidth ") + (receiver == Vfo::A ? "A " : "B ") + std::to_string(deltaHz));
  }
  void ShiftPassband(Vfo receiver, int deltaHz) override {
    Note(std::string("shift ") + (receiver == Vfo::A ? "A " : "B ") + std::to_string(deltaHz));
  }
  bool StepSpan(int direction) override {
    if (OwnSpan) Note("span " + std::to_string(direction));
    return OwnSpan;
  }
  void StepFrequency(int direction, double centreMHz) override {
    Note("step " + std::to_string(direction) + " from " + std::to_string(centreMHz));
  }

  bool Found = true;
  double FreqMHz = 0;
  int Mode = mode::kUsb;
  double Offset = 0;
  int Opens = 0;
  int Closes = 0;
  int Refreshes = 0;
  bool VfoB = true;
  bool Modes = true;
  bool OwnSpan = false;
  std::vector<std::string> Requests;  ///< everything that was asked of it, in order

 private:
  void Note(std::string request) { Requests.push_back(std::move(request)); }
};

class FakeScope final : public RadioLink, public SpectrumSource {
 public:
  bool Open(RadioState& radio) override {
    radio.K4Connected = Connects;
    return Accepts;
  }
  void Close(RadioState& radio) override {
    radio.K4Connected = false;
    ++Closes;
  }
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  [[nodiscard]] LevelScale Scale() const override { return {-140, -40, 100, 20}; }
  [[nodiscard]] std::array<double, 21> GridHz() const override {
    std::array<double, 21> grid{};
    for (std::size_t i = 0; i < grid.size(); ++i) grid[i] = 5000.0 * static_cast<double>(i);
    return grid;
  }
  PollResult Poll(const LineRequest&, SpectrumLine& line) override {
    if (!Ready) return PollResult::Pending;
    Ready = false;
    line = Next;
    return PollResult::Line;
  }
  [[nodiscard]] std::string Failure() const override { return {}; }

  bool Accepts = true;
  bool Connects = true;
  bool Ready = false;
  int Closes = 0;
  SpectrumLine Next;
};

}  // namespace spectrino
