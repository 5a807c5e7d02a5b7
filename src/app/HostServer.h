// The rigctld that this program runs itself: a child that starts with it, is started again when it ends, and
// goes when the program goes, even when that is killed. Speaks no word with it: the link to a CAT server is
// the same whoever runs it.
#pragma once

#include <QProcess>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "rig/LinkWatch.h"

namespace spectrino {

/// What it serves, and where.
struct HostServerTask {
  int Model = 0;         ///< by "rigctl -l"
  std::string Device{};  ///< empty: none is named
  int Baud = 0;          ///< 0: the radio's usual one
  int Port = 4532;       ///< on the loopback address
  bool Scope = false;    ///< the radio's scope is published to the loopback address as well, one port higher

  bool operator==(const HostServerTask&) const = default;
};

[[nodiscard]] QStringList HostServerArguments(const HostServerTask& task);

class HostServer final {
 public:
  /// Both outlive it. program: the server to run.
  HostServer(Notifier& user, const Clock& clock, QString program = "rigctld");
  ~HostServer();
  HostServer(const HostServer&) = delete;
  HostServer& operator=(const HostServer&) = delete;

  /// Serves this from now on; nothing: no server of ours. Where another one holds the port already, that one
  /// serves, and it is looked at again now and then.
  void Serve(std::optional<HostServerTask> task);
  [[nodiscard]] LinkHealth Health() const { return watch_.Health(); }
  /// 0 while it does not run.
  [[nodiscard]] qint64 ProcessId() const { return process_.processId(); }

 private:
  void Start();
  void End();
  void Ended();

  Notifier& user_;
  LinkWatch watch_;
  QString program_;
  std::optional<HostServerTask> task_;
  QProcess process_;
  QTimer retry_;
  QByteArray lastWords_;
  std::string told_;  ///< the last words that the user was told
};

/// Hands on what "rigctl -l" prints; an empty text when it is not installed or does not answer within 5 s.
void AskRigctlList(std::function<void(const std::string&)> answered);

}  // namespace spectrino
