// Where the settings of a demo run live, and die.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include "adapters/posix/FileSystem.h"

namespace spectrino {

/// A folder of its own, removed at the end. Those that killed demo runs left behind are removed when one is
/// made: a running demo holds a lock on its folder, a dead one does not.
class DemoFolder {
 public:
  DemoFolder();

  [[nodiscard]] QString Path() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
  posix::Descriptor held_;
};

}  // namespace spectrino
