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
  int Model = 0;                   ///< by "rigctl -l"
  std::string Device{};            ///< empty: none is named
  int Baud = 0;                    ///< 0: the radio's usual one
  std::string Host = "127.0.0.1";  ///< the loopback address that it serves on
  int Port = 4532;
  bool Scope = false;  ///< the radio's scope is published to the loopback address as well, one port higher

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

  /// Serves this from now on; nothing: no server of ours. Never waits: the one before is asked to go, made to
  /// when it does not, and the next begins when it is gone. Where another one holds the port already, that
  /// one serves, and it is looked at again now and then.
  void Serve(std::optional<HostServerTask> task);
  [[nodiscard]] LinkHealth Health() const { return watch_.Health(); }
  /// Why it does not serve, with its last words, until it serves again; empty while nothing is wrong.
  [[nodiscard]] const std::string& Trouble() const { return trouble_; }
  /// The trouble is another one, or is over.
  std::function<void()> Changed;
  /// 0 while it does not run.
  [[nodiscard]] qint64 ProcessId() const { return process_.processId(); }
  /// It is ours that serves there.
  [[nodiscard]] bool ServesAt(const std::string& host, int port) const {
    return works_ && task_ && task_->Host == host && task_->Port == port;
  }

 private:
  void Begin();
  void Start();
  void Look();
  void Dismiss();
  void Ended();
  void Tell(std::string trouble);

  Notifier& user_;
  LinkWatch watch_;
  QString program_;
  std::optional<HostServerTask> task_;
  QTimer look_;
  QTimer patience_;  ///< with one that was asked to go
  QProcess process_;
  QByteArray lastWords_;
  std::string trouble_;
  bool works_ = false;      ///< somebody answers at its port while it runs
  bool asking_ = false;     ///< whether somebody does
  bool dismissed_ = false;  ///< it was asked to go
};

/// Hands on what "rigctl -l" prints; an empty text when it is not installed or does not answer within 5 s.
void AskRigctlList(std::function<void(const std::string&)> answered);

}  // namespace spectrino
