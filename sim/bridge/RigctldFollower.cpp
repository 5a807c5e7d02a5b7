#include "sim/bridge/RigctldFollower.h"

#include <algorithm>

#include "state/Val.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

constexpr auto kPause = 50ms;
constexpr int kTickMs = 10;
constexpr double kMostHz = 1e12;

}  // namespace

RigctldFollower::RigctldFollower(const RigctldEndpoint& endpoint)
    : name_("rigctld at " + QString::fromStdString(endpoint.Text())) {
  client_.Open(endpoint, true);
  tick_.setInterval(kTickMs);
  QObject::connect(&tick_, &QTimer::timeout, &tick_, [this] {
    client_.Tick();
    LookAfterLink();
    if (client_.ReadsIdle() && clock_.Now() >= next_) Ask();
  });
  tick_.start();
}

void RigctldFollower::LookAfterLink() {
  QString trouble = radio_.Trouble;
  switch (client_.Health().State) {
    case LinkState::Live:
      trouble.clear();
      break;
    case LinkState::Silent:
      trouble = "the radio of the " + name_ + " does not answer: is it switched on?";
      break;
    case LinkState::Lost:
      trouble = "the " + name_ + " is gone: is it running?";
      break;
    case LinkState::Connecting:
    case LinkState::Closed:
      break;  // an attempt tells nothing yet
  }
  if (trouble == radio_.Trouble) return;
  radio_.Trouble = trouble;
  if (Told) Told(radio_);
}

// A and B in turn; B only where the server can address it without switching over.
void RigctldFollower::Ask() {
  askedB_ = !askedB_ && client_.TakesVfo();
  const Vfo vfo = askedB_ ? Vfo::B : Vfo::A;
  client_.Read({.Command = "get_vfo_info",
                .Arguments = askedB_ ? "VFOB" : "VFOA",
                .Of = {},
                .Done =
                    [this, vfo](const RigctldReply* reply) {
                      next_ = clock_.Now() + kPause;
                      if (reply != nullptr && reply->Code == rprt::kDone) Take(vfo, *reply);
                    },
                .Slot = {}});
}

void RigctldFollower::Take(Vfo vfo, const RigctldReply& reply) {
  const auto hz = static_cast<qint64>(std::clamp(Val(reply.Value("Freq").value_or("0")), 0.0, kMostHz));
  if (vfo == Vfo::B) {
    radio_.VfoBHz = hz;
  } else {
    const std::string_view mode = reply.Value("Mode").value_or("");
    radio_.VfoAHz = hz;
    radio_.Mode = QString::fromUtf8(mode.data(), static_cast<qsizetype>(mode.size()));
    radio_.BandwidthHz = RoundToInt32(Val(reply.Value("Width").value_or("0")));
    radio_.Split = reply.Value("Split") == "1";
  }
  if (Told) Told(radio_);
}

void RigctldFollower::SetVfo(bool vfoB, qint64 hz) {
  client_.Set({.Command = "set_freq",
               .Arguments = std::to_string(hz),
               .Of = vfoB ? Vfo::B : Vfo::A,
               .Done = {},
               .Slot = vfoB ? "B" : "A"});
}

}  // namespace spectrino
