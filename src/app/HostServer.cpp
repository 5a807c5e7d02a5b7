#include "app/HostServer.h"

#include <sys/prctl.h>

#include <QHostAddress>
#include <QTcpServer>
#include <csignal>
#include <utility>

namespace spectrino {
namespace {

constexpr int kLookMs = 500;
constexpr int kGoodbyeMs = 500;
constexpr int kListDeadlineMs = 5000;
constexpr qsizetype kLastWords = 200;

bool PortIsFree(int port) {
  QTcpServer probe;
  return probe.listen(QHostAddress::LocalHost, static_cast<quint16>(port));
}

/// On one line, for the user.
std::string Words(const QByteArray& output) {
  return output.simplified().toStdString();
}

}  // namespace

QStringList HostServerArguments(const HostServerTask& task) {
  QStringList arguments{"-m", QString::number(task.Model), "-T", "127.0.0.1",
                        "-t", QString::number(task.Port)};
  if (!task.Device.empty()) arguments << "-r" << QString::fromStdString(task.Device);
  if (task.Baud > 0) arguments << "-s" << QString::number(task.Baud);
  // The long form: the short one of the address is broken in version 4.5.
  if (task.Scope)
    arguments << "--multicast-addr=127.0.0.1"
              << "--multicast-port=" + QString::number(task.Port + 1) << "-C"
              << "async=1";
  return arguments;
}

HostServer::HostServer(Notifier& user, const Clock& clock, QString program)
    : user_(user), watch_(clock), program_(std::move(program)) {
  process_.setProcessChannelMode(QProcess::MergedChannels);
  // A child that outlives a killed parent would hold the radio.
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  QObject::connect(&process_, &QProcess::finished, &process_, [this] { Ended(); });
  QObject::connect(&process_, &QProcess::errorOccurred, &process_, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) Ended();
  });
  QObject::connect(&process_, &QProcess::started, &process_, [this] { watch_.Heard(); });
  // Read as it comes: it may talk all day, and only its last words matter.
  QObject::connect(&process_, &QProcess::readyRead, &process_,
                   [this] { lastWords_ = (lastWords_ + process_.readAll()).right(kLastWords); });
  retry_.setInterval(kLookMs);
  QObject::connect(&retry_, &QTimer::timeout, &retry_, [this] {
    if (watch_.TryDue()) Start();
  });
}

HostServer::~HostServer() {
  End();
}

void HostServer::Serve(std::optional<HostServerTask> task) {
  if (task == task_) return;
  End();
  task_ = std::move(task);
  told_.clear();
  if (!task_) return;
  Start();
  retry_.start();
}

void HostServer::Start() {
  watch_.Begin();
  if (!PortIsFree(task_->Port)) {
    watch_.Lost("another program serves port " + std::to_string(task_->Port));
    return;
  }
  lastWords_.clear();
  process_.start(program_, HostServerArguments(*task_));
}

void HostServer::End() {
  retry_.stop();
  watch_.End();
  task_.reset();
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  if (!process_.waitForFinished(kGoodbyeMs)) {
    process_.kill();
    process_.waitForFinished(kGoodbyeMs);
  }
}

void HostServer::Ended() {
  if (!task_) return;
  std::string words = process_.error() == QProcess::FailedToStart
                          ? "rigctld cannot be started: install the package libhamlib-utils"
                          : "rigctld ended: " + Words(lastWords_);
  watch_.Lost(words);
  if (words == told_) return;  // each try says the same
  user_.Log(LogArea::Host, words);
  user_.ShowStatus(words);
  told_ = std::move(words);
}

void AskRigctlList(std::function<void(const std::string&)> answered) {
  auto* process = new QProcess;
  QTimer::singleShot(kListDeadlineMs, process, [process] { process->kill(); });
  const auto end = [process, answered = std::move(answered)] {
    answered(process->readAllStandardOutput().toStdString());
    process->deleteLater();
  };
  QObject::connect(process, &QProcess::finished, process, end);
  QObject::connect(process, &QProcess::errorOccurred, process, [end](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) end();
  });
  process->start("rigctl", {"-l"});
}

}  // namespace spectrino
