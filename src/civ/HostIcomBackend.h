// An Icom behind the host program as tuning, bands, modes and macros see it: frequencies are the host's, the
// rest are the radio's own commands.
#pragma once

#include "rig/RigBackend.h"

namespace spectrino {

class HostIcomBackend final : public RigBackend {
 public:
  /// Both outlive it. own: the Icom's back-end, whose commands take the same way.
  HostIcomBackend(RigBackend& host, RigBackend& own) : host_(host), own_(own) {}

  /// What the host tells of filters and transmitter; the scope shows one VFO, and one is told.
  void Refresh(RadioState& radio) override {
    host_.Refresh(radio);
    const double widthHz = radio.MainBandwidthHz;  // the host tells and sets it
    own_.Refresh(radio);
    radio.MainBandwidthHz = widthHz;
  }
  void SetFrequency(Vfo /*vfo*/, double freqMHz, Aim aim) override {
    host_.SetFrequency(Vfo::A, freqMHz, aim);
  }
  void RememberBand() override { own_.RememberBand(); }
  void SelectBand(int button) override { own_.SelectBand(button); }
  bool SelectMode(const ModeRequest& request) override { return own_.SelectMode(request); }
  bool SetMode(Vfo receiver, const ExactMode& exact) override { return own_.SetMode(receiver, exact); }
  bool Transmit(bool on) override { return host_.Transmit(on); }
  void SendMacro(std::string_view text) override { own_.SendMacro(text); }
  [[nodiscard]] FilterReach FilterReachOf(Vfo receiver) const override {
    return receiver == Vfo::A ? host_.FilterReachOf(receiver) : FilterReach{};
  }
  void ChangeBandwidth(Vfo receiver, int deltaHz) override { host_.ChangeBandwidth(receiver, deltaHz); }
  void ShiftPassband(Vfo receiver, int deltaHz) override { host_.ShiftPassband(receiver, deltaHz); }
  void StepFrequency(int direction, double centreMHz) override { own_.StepFrequency(direction, centreMHz); }

 private:
  RigBackend& host_;
  RigBackend& own_;
};

}  // namespace spectrino
