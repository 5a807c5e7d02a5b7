// The commands of a simulated Icom for what its scope shows; those that are a plain number are settings.
#pragma once

#include "sim/icom/IcomSimCommand.h"
#include "sim/icom/IcomSimSettings.h"

namespace spectrino {

class IcomSimScopeControl {
 public:
  /// Both outlive it.
  IcomSimScopeControl(IcomSimState& state, const IcomSimSettings& settings)
      : state_(state), settings_(settings) {}

  /// Nothing when the command is of another subject.
  [[nodiscard]] std::optional<SimAnswer> Execute(SimByteView command);
  /// The edge set that the fixed-mode scope shows.
  [[nodiscard]] SimHzRange FixedEdges() const;

 private:
  [[nodiscard]] SimHzRange EdgesOf(int range, int set) const;
  SimAnswer ScopeSpan(SimByteView data);
  SimAnswer ScopeReference(SimByteView data);
  SimAnswer ScopeEdges(SimByteView data);

  IcomSimState& state_;
  const IcomSimSettings& settings_;
};

}  // namespace spectrino
