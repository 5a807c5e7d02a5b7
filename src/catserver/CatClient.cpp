#include "catserver/CatClient.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace spectrino {
namespace {

constexpr std::size_t kMostName = 32;

}  // namespace

std::string ProgramName(const std::string& process) {
  constexpr std::array<std::array<std::string_view, 2>, 3> kKnown{
      {{"wsjtx", "WSJT-X"}, {"jtdx", "JTDX"}, {"js8call", "JS8Call"}}};
  for (const auto& [called, name] : kKnown)
    if (process == called) return std::string(name);
  // A process calls itself what it likes.
  std::string name = process.substr(0, kMostName);
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::iscntrl(c) != 0; }, '?');
  return name;
}

CatClient::CatClient(Visitor visitor, CatServerState& radio, Ways ways)
    : socket_(std::move(visitor.Socket)),
      peer_{std::move(visitor.Address), visitor.Port},
      radio_(radio),
      ways_(std::move(ways)),
      face_(radio, {.Send = [this](std::string_view bytes) { Send(bytes); },
                    .Told = [this](const CatWish& wish, CatResult result) { Noted(wish, result); }}) {
  socket_->DataArrival = [this](std::span<const std::uint8_t> bytes) { EndUnless(face_.Feed(bytes)); };
  socket_->Closed = [this] { EndUnless(false); };
  socket_->Error = [this](std::string_view) { EndUnless(false); };
}

CatClient::~CatClient() {
  StopTransmitting();
}

void CatClient::Tick() {
  if (face_.Busy()) EndUnless(face_.Tick());
}

void CatClient::SetName(const std::string& name) {
  name_ = name;
  if (const auto told = std::exchange(nameless_, std::nullopt); told && !name_.empty())
    ways_.Told(*this, told->first, told->second);
}

std::string CatClient::Name() const {
  return name_.empty() ? "A program at port " + std::to_string(peer_.Port) : name_;
}

void CatClient::StopTransmitting() {
  if (std::exchange(transmits_, false)) radio_.StopTransmitting();
}

void CatClient::Send(std::string_view bytes) {
  if (overrun_) return;
  socket_->Send(bytes);
  overrun_ = socket_->Unsent() > kMostUnsent;
}

void CatClient::Noted(const CatWish& wish, CatResult result) {
  if (wish.What == CatWish::Kind::Transmit && static_cast<int>(result) >= 0) transmits_ = wish.On;
  if (name_.empty()) nameless_ = {wish, result};
  ways_.Told(*this, wish, result);
}

void CatClient::EndUnless(bool stays) {
  if (stays && !overrun_) return;
  const auto end = ways_.Ended;
  end(*this);
}

}  // namespace spectrino
