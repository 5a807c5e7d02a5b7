// The radios that the CAT server of this machine can serve, from its own list of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace spectrino {

struct RigModel {
  int Number = 0;    ///< as the server knows it; above 0
  std::string Name;  ///< maker and model, "Icom IC-7300"

  bool operator==(const RigModel&) const = default;
};

/// The models of what "rigctl -l" prints: a heading, then columns
///
///    Rig #  Mfg                    Model                   Version         Status      Macro
///     3073  Icom                   IC-7300                 20230109.10     Stable      RIG_MODEL_IC7300
///
/// that begin where their heading begins. Lines without a number are left out; without a heading all are.
/// Sorted by name.
[[nodiscard]] std::vector<RigModel> ReadRigList(std::string_view text);

}  // namespace spectrino
