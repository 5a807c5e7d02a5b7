// Where the radio's frequency comes from, and how a sound-card spectrum relates to it.
// Only the enumeration: the one switch over it is RigRouter's.
#pragma once

namespace spectrino {

/// Setting "OptFreq". The numbers are stored, so they never change.
enum class CatControl {
  HostIf = 0,
  FixedLo = 1,
  HostK3If = 2,
  BridgeIf = 3,
  BridgeFixedLo = 4,
  KetrelIf = 5,
  KetrelFixedLo = 6,
  RadioDirect = 7,
  IcomViaHost = 8,
};

/// The links that need the host CAT program.
[[nodiscard]] constexpr bool UsesHost(CatControl control) {
  return control == CatControl::HostIf || control == CatControl::FixedLo || control == CatControl::HostK3If ||
         control == CatControl::IcomViaHost;
}

/// The receiver is a quadrature mixer with a fixed oscillator: the band stands still, the marker moves.
[[nodiscard]] constexpr bool IsFixedLo(CatControl control) {
  return control == CatControl::FixedLo || control == CatControl::BridgeFixedLo ||
         control == CatControl::KetrelFixedLo;
}

}  // namespace spectrino
