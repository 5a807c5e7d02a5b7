#include "host/ui/HostKit.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
/// How late a read or a deadline may be.
constexpr auto kTick = 5ms;
}  // namespace

HostKit::HostKit(const KitParts& parts, std::unique_ptr<ByteSocket> socket,
                 std::unique_ptr<DatagramSocket> lines)
    : socket_(std::move(socket)),
      lines_(std::move(lines)),
      radio_(*socket_, parts.Store, parts.User, parts.Time),
      backend_({.Radio = radio_,
                .Store = parts.Store,
                .Settings = parts.Settings,
                .User = parts.User,
                .Pump = parts.Pump,
                .Time = parts.Time,
                .Abandoned = parts.Abandoned,
                .Ticking = [this](bool on) { on ? tmrHost_.start(kTick) : tmrHost_.stop(); }}),
      icom_({.Radio = radio_,
             .Backend = backend_,
             .Socket = *lines_,
             .Store = parts.Store,
             .User = parts.User,
             .Time = parts.Time}) {
  tmrHost_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&tmrHost_, &QTimer::timeout, &tmrHost_, [this] {
    backend_.Tick();
    icom_.Tick();
  });
}

HostKit::~HostKit() = default;

bool HostKit::Carries(CatWay way) const {
  return way == CatWay::Host || way == CatWay::HostK3 || way == CatWay::HostAndScope;
}

}  // namespace spectrino
