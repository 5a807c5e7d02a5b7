// A radio that tells what it was asked for when the test lets it, and what programs see of it.
#pragma once

#include <span>

#include "catserver/CatServerState.h"
#include "fakes/FakeClock.h"

namespace spectrino {

struct CatBench final : RigBackend {
  void Refresh(RadioState& radio) override { radio = Asked; }
  void SetFrequency(Vfo vfo, double freqMHz, Aim) override {
    (vfo == Vfo::A ? Asked.MainFreqMHz : Asked.SubFreqMHz) = freqMHz;
    Obey();
  }
  void SelectBand(int) override {}
  bool SelectMode(const ModeRequest&) override { return false; }
  void SendMacro(std::string_view) override {}
  bool SetMode(Vfo vfo, const ExactMode& exact) override {
    (vfo == Vfo::A ? Asked.RadioMode : Asked.SubRadioMode) = exact.RadioMode;
    Asked.Teletype = exact.Teletype;
    Obey();
    return true;
  }
  bool SetSplit(bool on) override {
    Asked.SplitOn = on ? 1 : 0;
    Obey();
    return true;
  }
  bool Transmit(bool on) override {
    Asked.Transmitting = on;
    Obey();
    return true;
  }
  void ChangeBandwidth(Vfo, int deltaHz) override {
    Asked.MainBandwidthHz += deltaHz;
    Obey();
  }
  void Obey() {
    if (Obeys) Refresh(Told);
  }

  FakeClock Clock;
  RadioState Asked = [] {
    RadioState radio;
    radio.MainFreqMHz = 14.074;
    radio.SubFreqMHz = 14.08;
    radio.RadioMode = mode::kUsb;
    radio.SubRadioMode = mode::kCw;
    radio.MainBandwidthHz = 2700;
    radio.SubBandwidthHz = 500;
    radio.SMeterTold = true;
    radio.SMeterDbm = -97;
    return radio;
  }();
  RadioState Told = Asked;
  bool Obeys = true, There = true, Heard = true, VfoB = true, Ptt = true;
  CatServerState State{{.Radio = Told,
                        .Time = Clock,
                        .Backend = [this] { return There ? this : nullptr; },
                        .Heard = [this] { return Heard; },
                        .HasVfoB = [this] { return VfoB; },
                        .MayTransmit = [this] { return Ptt; }}};
};

inline std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace spectrino
