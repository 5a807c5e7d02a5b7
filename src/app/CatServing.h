// The CAT server of this program: gives it its socket, its terminal and the radio of the run, by the
// settings. Says what other programs do; how they are answered is catserver's.
#pragma once

#include <QSocketNotifier>
#include <QThreadPool>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/PosixTerminal.h"
#include "adapters/qt/QtServerSocket.h"
#include "catserver/CatServer.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class CatServing final {
 public:
  /// All outlive it.
  struct Parts {
    const Session& State;
    RunCycle& Cycle;
    SettingsStore& Store;
    const Clock& Time;
  };
  explicit CatServing(const Parts& parts);
  ~CatServing();
  CatServing(const CatServing&) = delete;
  CatServing& operator=(const CatServing&) = delete;

  /// Serves what the settings say from now on.
  void Load();
  /// Where programs find the radio now: "127.0.0.1:4533, /run/user/1000/spectrino/cat"; or why not.
  [[nodiscard]] std::string Text() const;
  /// What the window is to show; empty takes it back.
  std::function<void(const std::string& text)> Show;

 private:
  [[nodiscard]] CatServerState::Parts RadioParts();
  void AskName(const CatPeer& peer, std::function<void(const std::string&)> named);
  void Attend();
  void ShowNews(const std::string& text);
  void ShowStanding();

  Parts parts_;
  QtServerSocket listener_;
  PosixTerminal terminal_;
  CatServerState radio_;
  CatServerTask task_;
  bool mayTransmit_ = false;
  CatServer server_;
  std::vector<std::unique_ptr<QSocketNotifier>> terminalEvents_;
  QTimer tick_;
  QTimer news_;  ///< while news is shown
  QThreadPool names_;
};

}  // namespace spectrino
