// The settings of a simulated Icom that are a number within bounds: read without data, stored with it.
#pragma once

#include <initializer_list>
#include <optional>

#include "sim/icom/IcomSimCommand.h"
#include "sim/icom/IcomSimState.h"

namespace spectrino {

class IcomSimSettings {
 public:
  /// Both outlive it.
  IcomSimSettings(const IcomSimModel& model, IcomSimState& state) : model_(model), state_(state) {}

  /// Nothing when the model has no such setting.
  [[nodiscard]] std::optional<SimAnswer> Execute(SimByteView command);
  /// By its command bytes, e.g. {0x27, 0x11}. The setting must exist.
  [[nodiscard]] int Value(std::initializer_list<std::uint8_t> head) const;
  /// Back to what it is in a radio that was just switched on.
  void Reset(std::initializer_list<std::uint8_t> head);

 private:
  [[nodiscard]] std::uint32_t ModelBit() const { return 1U << static_cast<unsigned>(model_.Kind); }

  const IcomSimModel& model_;
  IcomSimState& state_;
};

}  // namespace spectrino
