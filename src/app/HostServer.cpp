#include "app/HostServer.h"

#include <sys/prctl.h>

#include <QHostAddress>
#include <QTcpServer>
#include <csignal>
#include <utility>

#include "app/ServerProbe.h"

namespace spectrino {
namespace {

constexpr int kLookMs = 500;
constexpr int kGoodbyeMs = 500;
constexpr int kListDeadlineMs = 5000;
constexpr qsizetype kLastWords = 200;

bool PortIsFree(const HostServerTask& task) {
  QTcpServer probe;
  return probe.listen(QHostAddress(QString::fromStdString(task.Host)), static_cast<quint16>(task.Port));
}

/// On one line, for the user.
std::string Words(const QByteArray& output) {
  return output.simplified().toStdString();
}

}  // namespace

QStringList HostServerArguments(const HostServerTask& task) {
  QStringList arguments{"-m", QString::number(task.Model), "-T", QString::fromStdString(task.Host),
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
  // Read as it comes: it may talk all day, and only its last words matter.
  QObject::connect(&process_, &QProcess::readyRead, &process_,
                   [this] { lastWords_ = (lastWords_ + process_.readAll()).right(kLastWords); });
  look_.setInterval(kLookMs);
  QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
  patience_.setSingleShot(true);
  QObject::connect(&patience_, &QTimer::timeout, &patience_, [this] { process_.kill(); });
}

// The one place that waits: the program ends, and leaves no server behind.
HostServer::~HostServer() {
  Changed = nullptr;
  Serve(std::nullopt);
  if (process_.state() == QProcess::NotRunning || process_.waitForFinished(kGoodbyeMs)) return;
  process_.kill();
  process_.waitForFinished(kGoodbyeMs);
}

void HostServer::Serve(std::optional<HostServerTask> task) {
  if (task == task_) return;
  task_ = std::move(task);
  look_.stop();
  watch_.End();
  Tell({});
  // The radio's device and the port are free only when the one before is gone.
  if (process_.state() != QProcess::NotRunning)
    Dismiss();
  else
    Begin();
}

void HostServer::Begin() {
  if (!task_) return;
  Start();
  look_.start();
}

void HostServer::Start() {
  watch_.Begin();
  works_ = false;
  if (!PortIsFree(*task_)) {
    Tell({});
    watch_.Lost("another program serves port " + std::to_string(task_->Port));
    return;
  }
  lastWords_.clear();
  process_.start(program_, HostServerArguments(*task_));
}

void HostServer::Look() {
  if (process_.state() == QProcess::NotRunning) {
    if (watch_.TryDue()) Start();
  } else if (works_) {
    watch_.Heard();
  } else if (!asking_) {
    asking_ = true;
    AskPort(task_->Host, task_->Port, &look_, [this](PortHolder holder) {
      asking_ = false;
      if (holder == PortHolder::Nobody || dismissed_ || process_.state() != QProcess::Running) return;
      works_ = true;
      watch_.Heard();
      Tell({});
    });
  }
}

void HostServer::Dismiss() {
  if (std::exchange(dismissed_, true)) return;
  process_.terminate();
  patience_.start(kGoodbyeMs);
}

void HostServer::Ended() {
  patience_.stop();
  works_ = false;
  if (std::exchange(dismissed_, false)) {
    Begin();
    return;
  }
  if (!task_) return;
  std::string words = process_.error() == QProcess::FailedToStart
                          ? "rigctld cannot be started: install the package libhamlib-utils"
                          : "rigctld ended" + (lastWords_.isEmpty() ? "" : ": " + Words(lastWords_));
  watch_.Lost(words);
  if (words != trouble_) user_.Log(LogArea::Host, words);  // each try says the same
  Tell(std::move(words));
}

void HostServer::Tell(std::string trouble) {
  if (trouble == trouble_) return;
  trouble_ = std::move(trouble);
  if (Changed) Changed();
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
