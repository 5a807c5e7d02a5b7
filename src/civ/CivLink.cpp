#include "civ/CivLink.h"

#include <array>
#include <thread>
#include <utility>

#include "civ/CivParser.h"
#include "civ/HexText.h"
#include "state/BusyGuard.h"

namespace spectrino {

namespace {
constexpr std::size_t kMostAtClose = 8;  // a tenth of a second at most
}

CivLink::CivLink(SerialPort& port, CivState& state, IcomPanelView& panel, const Clock& clock,
                 Notifier& notifier)
    : port_(port), state_(state), panel_(panel), clock_(clock), notifier_(notifier) {
  port_.DataArrival = [this](std::span<const std::uint8_t> bytes) { TakeBytes(bytes); };
  port_.Lost = [this](const std::string& reason) { HandleLost(reason); };
}

CivLink::~CivLink() {
  port_.DataArrival = nullptr;
  port_.Lost = nullptr;
  FinishClosing();
}

std::string CivLink::Open(const std::string& path) {
  if (Closing()) return path + " is still being closed";
  unsent_.clear();
  received_.Clear();
  nextWrite_ = {};
  overlongTold_ = false;
  return port_.Open(path);
}

void CivLink::Close() {
  std::erase_if(unsent_, [](const Frame& frame) { return frame.kind == Kind::Read; });
  // The last frame is the one that silences the scope.
  while (unsent_.size() > kMostAtClose) unsent_.pop_front();
  closing_ = port_.IsOpen();
  ReceiveCiv();
  Pump();
}

// The window has gone, and nothing turns the events any more: now waiting is right.
void CivLink::FinishClosing() {
  while (closing_) {
    std::this_thread::sleep_for(kWritePace);
    nextWrite_ = {};
    Pump();
  }
}

void CivLink::SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) {
  if (data == "?")
    Queue(Kind::Read, command, subCommand, {});
  else
    Queue(Kind::Command, command, subCommand, data);
}

void CivLink::SendFrequency(std::string_view bcd) {
  Queue(Kind::Frequency, "05", {}, bcd);
}

void CivLink::Queue(Kind kind, std::string_view command, std::string_view subCommand, std::string_view data) {
  if (!IsOpen()) return;
  if (BusyGuard busy{state_.CivSendBusy}; busy) {
    std::string text = "FEFE";
    text.append(state_.RadioAddress).append(state_.ControllerAddress);
    text.append(command).append(subCommand).append(data);
    Frame frame{kind, BytesFromHexText(text)};
    // As a byte: behind an odd number of digits, as a macro may have, it would not end the frame, and the
    // radio would lose the next one too.
    frame.bytes.push_back(0xFD);
    // While a wheel turns, only its last frequency matters, and reads are worth their time behind it alone.
    std::erase_if(unsent_, [&](const Frame& older) {
      return older.kind == kind &&
             (kind == Kind::Frequency || (kind == Kind::Read && older.bytes == frame.bytes));
    });
    unsent_.push_back(std::move(frame));
  }
  Pump();
}

void CivLink::Pump() {
  const auto now = clock_.Now();
  if (!unsent_.empty() && now >= nextWrite_) {
    const Frame frame = std::move(unsent_.front());
    unsent_.pop_front();
    nextWrite_ = now + kWritePace;
    port_.Write(frame.bytes);
  }
  if (closing_ && unsent_.empty()) {
    closing_ = false;
    port_.CloseWhenSent();
  }
}

void CivLink::TakeBytes(std::span<const std::uint8_t> bytes) {
  arrived_ = clock_.Now();
  received_.Append(bytes);
  ReceiveCiv();
}

void CivLink::ReceiveCiv() {
  if (state_.ResizeInProgress) return;
  BusyGuard busy{state_.CivParserBusy};
  if (!busy) return;
  while (received_.NextFrame(state_.RadioAddress, frame_)) {
    const std::uint64_t serial = state_.ScopeSerial;
    const std::uint64_t divisions = state_.ScopeDivisionsSeen;
    ParseCivFrame(frame_, state_, panel_);
    if (state_.ScopeSerial != serial) lineArrived_ = arrived_;
    if (state_.ScopeDivisionsSeen != divisions) divisionArrived_ = arrived_;
    if (Heard) Heard();
  }
  if (received_.DropOverlong() && !std::exchange(overlongTold_, true))
    notifier_.Log(LogArea::Civ,
                  "dropped 64 KiB without an end of message; no more is said of it while the port is open");
}

void CivLink::RequestIcomStatus() {
  // Frequency, mode, AF level, squelch, centre or fixed, sweep speed, reference level.
  constexpr std::array<std::array<std::string_view, 2>, 7> kRequests{
      {{"03", ""}, {"04", ""}, {"14", "01"}, {"14", "03"}, {"27", "1400"}, {"27", "1A00"}, {"27", "1900"}}};
  for (const auto& [command, subCommand] : kRequests) SendCiv(command, subCommand, "?");
}

void CivLink::HandleLost(const std::string& reason) {
  unsent_.clear();
  received_.Clear();
  if (!std::exchange(closing_, false) && Lost) Lost(reason);
}

}  // namespace spectrino
