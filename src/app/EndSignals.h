// SIGTERM, SIGINT and SIGHUP as an event: a session that ends closes the window and its settings are saved.
#pragma once

#include <QObject>

namespace spectrino {

class EndSignals final : public QObject {
  Q_OBJECT
 public:
  /// One per program. Signals that are ignored stay so. The first signal is told; a second one ends the
  /// program at once.
  explicit EndSignals(QObject* parent = nullptr);
  ~EndSignals() override;

 signals:
  void EndWanted();
};

}  // namespace spectrino
