// HostIcom on a rigctld: lines by datagrams, one port above its own; everything else by its connection.
// Knows no command of the radio.
#pragma once

#include <chrono>
#include <deque>
#include <string>

#include "host/HostBackend.h"
#include "platform/DatagramSocket.h"
#include "rig/HostIcom.h"
#include "state/Pacer.h"

namespace spectrino {

class HostIcomLink final : public HostIcom {
 public:
  struct Parts {
    HostRadio& Radio;
    HostBackend& Backend;
    DatagramSocket& Socket;
    SettingsStore& Store;
    Notifier& User;
    const Clock& Time;
  };
  /// All outlive it; takes the socket's events.
  explicit HostIcomLink(const Parts& parts);
  ~HostIcomLink() override;

  /// To be called every few milliseconds.
  void Tick();

  // HostIcom
  void Open() override;
  void Close() override;
  [[nodiscard]] LinkHealth Health() const override;
  [[nodiscard]] int Findings() const override { return findings_; }
  [[nodiscard]] std::string Trouble() const override;
  [[nodiscard]] std::string ScopeOptions() const override;
  [[nodiscard]] std::string Model() const override { return parts_.Radio.State().Model; }
  void SetUsualAddress(std::string_view address) override { parts_.Radio.SetUsualAddress(address); }
  [[nodiscard]] RigBackend& Backend() override { return parts_.Backend; }
  [[nodiscard]] double HostIcomFrequency() const override { return parts_.Radio.HostGetFrequency(Vfo::A); }
  [[nodiscard]] bool HostIcomFrequencyIsAsked() const override {
    return parts_.Radio.FrequencyIsAsked(Vfo::A);
  }
  [[nodiscard]] bool HostIcomTransmits() const override { return parts_.Radio.State().Transmitting; }
  [[nodiscard]] std::string HostIcomMode() const override;
  void SwitchScope(bool on) override;
  void SendCommand(std::string_view hex) override;
  void Ask(std::string_view hex) override;

 private:
  void Listen();
  void AskNext();

  Parts parts_;
  std::uint16_t port_ = 0;  ///< for the lines; 0: there is none above the server's
  bool here_ = true;        ///< the server runs on this machine
  bool open_ = false;
  bool answers_ = false;  ///< the radio, since it was found or silent
  LinkHealth::Time lineCame_{};
  int findings_ = 0;
  std::string trouble_;
  Pacer listen_{std::chrono::seconds(2)};
  std::deque<std::string> asked_;  ///< read requests that wait
  LinkHealth::Time nextAsk_{};
};

}  // namespace spectrino
