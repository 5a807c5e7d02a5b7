// The inside of a simulated Icom: what it is set to, and what it answers to one CI-V command.
// Not the bus: addresses, echo, line rate and faults are in IcomRadio.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <utility>

#include "sim/icom/IcomSimBand.h"
#include "sim/icom/IcomSimBytes.h"
#include "sim/icom/IcomSimModel.h"

namespace spectrino {

struct SimVfo {
  std::int64_t Hz = 0;
  std::uint8_t Mode = 0x01;  ///< mode byte of CI-V: 00 LSB, 01 USB, 02 AM, 03 CW ...
  std::uint8_t Data = 0;     ///< data mode 0..1, on two-receiver models 0..3
  std::uint8_t Filter = 1;   ///< 1..3
};

struct IcomSimState {
  bool PowerOn = true;
  std::array<SimVfo, 2> Vfos;  ///< A and B, or main and sub
  std::size_t Selected = 0;
  bool MemoryMode = false;
  int MemoryChannel = 1;
  SimVfo Recalled;                 ///< what is tuned in memory mode
  std::map<int, SimVfo> Memories;  ///< written channels
  std::uint8_t Attenuator = 0;     ///< BCD dB, 0 off
  std::uint8_t Scan = 0;           ///< code of the running scan, 0 none
  std::uint8_t ScanSpan = 0xA1;
  std::uint8_t ScanResume = 0xD3;
  std::int64_t HalfSpanHz = 250'000;
  int RefHalfDb = 0;                                   ///< scope reference, -40..40
  std::map<std::pair<int, int>, SimHzRange> EdgeSets;  ///< by range and set, where changed
  std::map<std::uint32_t, SimBytes> Settings;          ///< by command bytes; everything else that is a number

  [[nodiscard]] const SimVfo& Active() const { return MemoryMode ? Recalled : Vfos[Selected]; }
  [[nodiscard]] SimVfo& Active() { return MemoryMode ? Recalled : Vfos[Selected]; }
};

class IcomSimControl {
 public:
  /// model and band must outlive the control.
  IcomSimControl(const IcomSimModel& model, const IcomSimBand& band);

  /// Carries out what stands after the addresses of a frame: command, sub-command, data.
  /// Returns the same part of the answer: FB, FA, or command and data; empty when a radio keeps quiet.
  /// seconds: since the radio was switched on, for the meter.
  [[nodiscard]] SimBytes Execute(SimByteView command, double seconds);

  [[nodiscard]] const IcomSimState& State() const { return state_; }
  [[nodiscard]] const IcomSimModel& Model() const { return model_; }
  /// One of the settings that are a number: its command bytes, e.g. {0x27, 0x11}. The setting must exist.
  [[nodiscard]] int Setting(std::initializer_list<std::uint8_t> head) const;
  /// The edge set that the fixed-mode scope shows.
  [[nodiscard]] SimHzRange FixedEdges() const;
  /// The operator's own hand on the radio. False, and nothing done, where it does not receive.
  bool TuneTo(std::int64_t hz);
  void SwitchTo(std::uint8_t mode) { state_.Active().Mode = mode; }

 private:
  /// Data of the answer when Ok, without the command's own bytes; no data: FB.
  struct Answer {
    bool Ok = false;
    SimBytes Data = {};
  };
  using Handler = Answer (IcomSimControl::*)(SimByteView);
  struct HandlerRow;
  struct SettingRow;
  [[nodiscard]] static std::span<const HandlerRow> Handlers();
  [[nodiscard]] static std::span<const SettingRow> Settings();

  [[nodiscard]] Answer Dispatch(SimByteView command, std::size_t& headBytes);
  [[nodiscard]] Answer ReadOrStore(const SettingRow& row, SimByteView data);
  [[nodiscard]] std::uint32_t ModelBit() const { return 1U << static_cast<unsigned>(model_.Kind); }
  [[nodiscard]] bool HasMode(std::uint8_t mode) const;
  [[nodiscard]] int MostDataMode() const { return model_.Receivers == 2 ? 3 : 1; }
  [[nodiscard]] SimVfo ChannelContent(int channel) const;
  [[nodiscard]] SimHzRange EdgesOf(int range, int set) const;

  Answer BandEdges(SimByteView data);
  Answer ReadFrequency(SimByteView data);
  Answer ReadMode(SimByteView data);
  Answer SetFrequency(SimByteView data);
  Answer SetMode(SimByteView data);
  Answer SelectVfo(SimByteView data);
  Answer SelectMemory(SimByteView data);
  Answer WriteMemory(SimByteView data);
  Answer MemoryToVfo(SimByteView data);
  Answer Scan(SimByteView data);
  Answer Attenuator(SimByteView data);
  Answer Accept(SimByteView data);
  Answer SquelchOpen(SimByteView data);
  Answer SignalMeter(SimByteView data);
  Answer QuietMeter(SimByteView data);
  Answer Power(SimByteView data);
  Answer Identify(SimByteView data);
  Answer MenuItem(SimByteView data);
  Answer DataMode(SimByteView data);
  Answer TransmitFrequency(SimByteView data);
  Answer VfoFrequency(SimByteView data);
  Answer VfoMode(SimByteView data);
  Answer ScopeSpan(SimByteView data);
  Answer ScopeReference(SimByteView data);
  Answer ScopeEdges(SimByteView data);

  const IcomSimModel& model_;
  const IcomSimBand& band_;
  IcomSimState state_;
  double seconds_ = 0;
};

}  // namespace spectrino
