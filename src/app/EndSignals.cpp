#include "app/EndSignals.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>

namespace spectrino {
namespace {

// A handler may do next to nothing: it writes a byte that the event loop reads.
int wakeUp[2] = {-1, -1};

extern "C" void TellEventLoop(int) {
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(wakeUp[0], &byte, 1);
}

constexpr int kEndSignals[] = {SIGTERM, SIGINT, SIGHUP};

/// nohup, or a shell without job control: whoever started the program wants it to go on.
bool IsIgnored(int signal) {
  struct sigaction now = {};
  return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

}  // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp) != 0) return;
  auto* notifier = new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
    notifier->setEnabled(false);
    emit EndWanted();
  });
  struct sigaction action = {};
  action.sa_handler = TellEventLoop;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : kEndSignals)
    if (!IsIgnored(signal)) ::sigaction(signal, &action, nullptr);
}

EndSignals::~EndSignals() {
  for (const int signal : kEndSignals)
    if (!IsIgnored(signal)) std::signal(signal, SIG_DFL);
  ::close(wakeUp[0]);
  ::close(wakeUp[1]);
}

}  // namespace spectrino
