// Where the band plan comes from: the operator's own file, else the one of the chosen region.
// Finds and reads; what a plan is made of is bandplan/.
#pragma once

#include <string>

#include "bandplan/BandPlan.h"
#include "platform/Notifier.h"

namespace spectrino {

class BandPlanFile {
 public:
  explicit BandPlanFile(Notifier& user) : user_(user) {}

  /// region: 0 none, 1..3. `bandplan.json` beside the settings stands for any region, unless nothing of it
  /// can be used. What is wrong with a file is logged once, until the trouble is another.
  [[nodiscard]] BandPlan Load(int region);

 private:
  [[nodiscard]] BandPlan Read(const std::string& path);

  Notifier& user_;
  std::string told_;
};

}  // namespace spectrino
