// The commands of a simulated Icom for frequency, mode, VFOs and memories.
#pragma once

#include "sim/icom/IcomSimCommand.h"
#include "sim/icom/IcomSimSettings.h"

namespace spectrino {

class IcomSimVfo {
 public:
  /// All outlive it. The radio begins at the model's own frequency.
  IcomSimVfo(const IcomSimModel& model, IcomSimState& state, const IcomSimSettings& settings);

  /// Nothing when the command is of another subject.
  [[nodiscard]] std::optional<SimAnswer> Execute(SimByteView command);
  /// False, and nothing done, where the radio does not receive.
  bool TuneTo(std::int64_t hz);

 private:
  [[nodiscard]] bool HasMode(std::uint8_t mode) const;
  [[nodiscard]] int MostDataMode() const { return model_.Receivers == 2 ? 3 : 1; }
  [[nodiscard]] SimVfo ChannelContent(int channel) const;

  SimAnswer BandEdges(SimByteView data);
  SimAnswer ReadFrequency(SimByteView data);
  SimAnswer ReadMode(SimByteView data);
  SimAnswer SetFrequency(SimByteView data);
  SimAnswer SetMode(SimByteView data);
  SimAnswer SelectVfo(SimByteView data);
  SimAnswer SelectMemory(SimByteView data);
  SimAnswer WriteMemory(SimByteView data);
  SimAnswer MemoryToVfo(SimByteView data);
  SimAnswer DataMode(SimByteView data);
  SimAnswer TransmitFrequency(SimByteView data);
  SimAnswer VfoFrequency(SimByteView data);
  SimAnswer VfoMode(SimByteView data);

  const IcomSimModel& model_;
  IcomSimState& state_;
  const IcomSimSettings& settings_;
};

}  // namespace spectrino
