#include "app/CatServing.h"

#include <QHostAddress>

#include "adapters/posix/PeerProcess.h"
#include "settings/SetupSection.h"

namespace spectrino {
namespace {

constexpr int kBusyMs = 5;
constexpr int kIdleMs = 200;
constexpr int kNewsMs = 8000;

/// Where the user's programs meet until he logs out; empty where the system has no such place.
std::string TerminalLink() {
  const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
  return folder.isEmpty() ? std::string() : folder.toStdString() + "/spectrino/cat";
}

}  // namespace

CatServing::CatServing(const Parts& parts)
    : parts_(parts),
      terminal_(TerminalLink()),
      radio_(RadioParts()),
      server_({.Listener = listener_, .Terminal = terminal_, .Radio = radio_, .Time = parts.Time}) {
  server_.AskName = [this](const CatPeer& peer, auto named) { AskName(peer, std::move(named)); };
  server_.Told = [this](const std::string& text) { ShowNews(text); };
  server_.TroubleChanged = [this] { ShowStanding(); };
  parts_.Cycle.Stopping = [this] { server_.StopTransmitting(); };
  names_.setMaxThreadCount(1);
  news_.setSingleShot(true);
  QObject::connect(&news_, &QTimer::timeout, &news_, [this] { ShowStanding(); });
  tick_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&tick_, &QTimer::timeout, &tick_, [this] {
    server_.Tick();
    Attend();
  });
}

CatServing::~CatServing() {
  parts_.Cycle.Stopping = nullptr;
  Show = nullptr;
  names_.clear();
  names_.waitForDone();
}

CatServerState::Parts CatServing::RadioParts() {
  return {.Radio = parts_.State.Radio,
          .Time = parts_.Time,
          .Backend = [this] { return parts_.Cycle.Backend(); },
          .Heard =
              [this] {
                const RadioKit* kit = parts_.Cycle.View().Way.Control;
                if (kit == nullptr) return false;
                const LinkState state = kit->CommandHealth().State;
                return state != LinkState::Silent && state != LinkState::Lost;
              },
          .HasVfoB = [this] { return parts_.Cycle.View().Way.Traits.HasVfoB; },
          .MayTransmit = [this] { return mayTransmit_; }};
}

void CatServing::Load() {
  const SetupSection setup(parts_.Store);
  const bool on = setup.Read(key::kCatServer);
  mayTransmit_ = setup.Read(key::kCatServerPtt);
  if (!mayTransmit_) server_.StopTransmitting();
  std::string address = setup.Read(key::kCatServerAddress);
  if (address.empty()) address = key::kCatServerAddress.Default;
  task_ = {.Socket = on,
           .Address = address,
           .Port = setup.Read(key::kCatServerPort),
           .Terminal = on && setup.Read(key::kCatServerTerminal)};
  terminalEvents_.clear();
  server_.Serve(task_);
  if (terminal_.IsOpen()) {
    for (const int fd : terminal_.Fds()) {
      terminalEvents_.push_back(std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read));
      QObject::connect(terminalEvents_.back().get(), &QSocketNotifier::activated, &tick_, [this] {
        terminal_.Process();
        Attend();
      });
    }
  }
  if (on)
    tick_.start(kIdleMs);
  else
    tick_.stop();
}

// What waits for the radio looks often.
void CatServing::Attend() {
  const int wanted = server_.Busy() ? kBusyMs : kIdleMs;
  if (tick_.isActive() && tick_.interval() != wanted) tick_.start(wanted);
}

std::string CatServing::Text() const {
  if (!task_.Socket) return {};
  std::string text = server_.Trouble();
  if (text.empty()) text = task_.Address + ":" + std::to_string(task_.Port);
  if (terminal_.IsOpen()) text += ", " + terminal_.Path();
  if (!terminal_.LinkTrouble().empty()) text += " (" + terminal_.LinkTrouble() + ")";
  return text;
}

// The search takes as long as there are open files on the machine.
void CatServing::AskName(const CatPeer& peer, std::function<void(const std::string&)> named) {
  if (!QHostAddress(QString::fromStdString(peer.Address)).isLoopback()) return;
  const auto own = static_cast<std::uint16_t>(task_.Port);
  names_.start([this, port = peer.Port, own, named = std::move(named)] {
    const std::string name = posix::PeerProcess(port, own);
    if (name.empty()) return;
    QMetaObject::invokeMethod(
        &tick_, [named, name] { named(name); }, Qt::QueuedConnection);
  });
}

void CatServing::ShowNews(const std::string& text) {
  Attend();
  news_.start(kNewsMs);
  if (Show) Show(text);
}

void CatServing::ShowStanding() {
  if (!news_.isActive() && Show) Show(server_.Trouble());
}

}  // namespace spectrino
