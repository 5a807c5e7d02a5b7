#include "host/RigctldClient.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr auto kConnectTime = 5s;
/// A server that ends a connection later than this without an answer waited for its radio.
constexpr auto kWaitsForRadio = 1s;
constexpr std::string_view kVfoOptionCommand = "chk_vfo";
constexpr const char* kRadioSilent = "the radio does not answer Castelon. Is it switched on?";

// "+" | "\" long name | blank, VFO | blank, arguments | LF. The plus asks for an answer that ends in RPRT.
std::string WireText(const RigctldRequest& request, bool takesVfo) {
  std::string text = "+\\";
  text += request.Command;
  if (request.Of && takesVfo) text += *request.Of == Vfo::A ? " VFOA" : " VFOB";
  if (!request.Arguments.empty()) text += ' ' + request.Arguments;
  // A line's end would begin a command of its own.
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text + '\n';
}

}  // namespace

std::optional<RigctldEndpoint> ParseEndpoint(std::string_view text) {
  text = Trim(text);
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return std::nullopt;
  std::string_view host = text.substr(0, colon);
  const std::string_view digits = text.substr(colon + 1);
  unsigned port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  if (error != std::errc() || end != digits.data() + digits.size() || port < 1 || port > 65535)
    return std::nullopt;
  if (host.starts_with('[') && host.ends_with(']'))
    host = host.substr(1, host.size() - 2);
  else if (host.find(':') != std::string_view::npos)
    return std::nullopt;
  if (host.empty() || host.find_first_of("/\\ \t") != std::string_view::npos) return std::nullopt;
  return RigctldEndpoint{std::string(host), static_cast<std::uint16_t>(port)};
}

bool RigctldEndpoint::IsThisMachine() const {
  return Host == "localhost" || Host == "::1" || Host.starts_with("127.");
}

RigctldClient::RigctldClient(ByteSocket& socket, const Clock& clock)
    : socket_(socket),
      clock_(clock),
      watch_(clock),
      reader_([this](const RigctldReply& reply) { Answered(reply); }) {
  socket_.Connected = [this] { SendOpening(); };
  socket_.Closed = [this] { Ended("closed the connection"); };
  socket_.Error = [this](std::string_view text) { Ended(text); };
  socket_.DataArrival = [this](std::span<const std::uint8_t> bytes) { Arrived(bytes); };
}

RigctldClient::~RigctldClient() {
  Close();
  socket_.Connected = nullptr;
  socket_.Closed = nullptr;
  socket_.Error = nullptr;
  socket_.DataArrival = nullptr;
}

void RigctldClient::Open(const RigctldEndpoint& endpoint, bool reconnect,
                         std::chrono::milliseconds patience) {
  Close();
  endpoint_ = endpoint;
  patience_ = patience;
  watch_.TryAgain(reconnect);
  open_ = true;
  heardAt_ = clock_.Now();
  Connect();
}

void RigctldClient::Close() {
  open_ = false;
  out_.clear();
  if (const std::string words = TakeLastWords(); !words.empty()) socket_.Send(words);
  silentWhy_.clear();
  DropRequests();
  socket_.Close();
  watch_.End();
}

void RigctldClient::Connect() {
  watch_.Begin();
  since_ = clock_.Now();
  socket_.Connect(endpoint_.Host, endpoint_.Port);
}

void RigctldClient::SendOpening() {
  connected_ = true;
  connectedAt_ = clock_.Now();
  // The option holds for this connection alone. Its own answer says nothing; what follows does.
  Send({.Command = "set_vfo_opt", .Arguments = "1", .Of = {}, .Done = {}, .Slot = {}}, true);
  Send({.Command = kVfoOptionCommand,
        .Arguments = {},
        .Of = {},
        .Done =
            [this](const RigctldReply* reply) {
              takesVfo_ = reply != nullptr && reply->Value("ChkVFO") == "1";
            },
        .Slot = {}},
       true);
  Send({.Command = "dump_caps",
        .Arguments = {},
        .Of = {},
        .Done =
            [this](const RigctldReply* reply) {
              if (reply == nullptr) return;
              ready_ = true;
              if (Ready) Ready(*reply);
              SendNextSet();
            },
        .Slot = {}},
       true);
}

void RigctldClient::Set(RigctldRequest request) {
  if (!connected_) {
    if (request.Done) request.Done(nullptr);
    return;
  }
  const auto same = [&](const RigctldRequest& waiting) {
    return !request.Slot.empty() && waiting.Slot == request.Slot;
  };
  if (const auto at = std::ranges::find_if(unsent_, same); at != unsent_.end())
    *at = std::move(request);
  else
    unsent_.push_back(std::move(request));
  SendNextSet();
}

void RigctldClient::SendNextSet() {
  if (!ready_ || setOut_ || unsent_.empty()) return;
  RigctldRequest next = std::move(unsent_.front());
  unsent_.pop_front();
  Send(std::move(next), false);
}

void RigctldClient::Read(RigctldRequest request) {
  if (ReadsIdle()) Send(std::move(request), true);
}

// In one piece: once we are gone the server may read no further.
void RigctldClient::SayGoodbye(const RigctldRequest& request) {
  const std::string words = TakeLastWords();
  if (ready_) socket_.Send(words + WireText(request, takesVfo_));
}

std::string RigctldClient::TakeLastWords() {
  std::string words;
  for (const RigctldRequest& request : std::exchange(unsent_, {}))
    if (ready_ && request.LeavesAnyway) words += WireText(request, takesVfo_);
  return words;
}

void RigctldClient::Send(RigctldRequest request, bool isRead) {
  if (out_.empty()) since_ = clock_.Now();
  (isRead ? readOut_ : setOut_) = true;
  const std::string text = WireText(request, takesVfo_);
  out_.push_back({std::move(request), isRead});
  socket_.Send(text);
}

void RigctldClient::Arrived(std::span<const std::uint8_t> bytes) {
  if (!reader_.Feed(bytes)) Fail("What answers at " + endpoint_.Text() + " is not Castelon", false);
}

void RigctldClient::Answered(const RigctldReply& reply) {
  if (out_.empty()) return;
  const RigctldRequest& asked = out_.front().Request;
  // A refusal may come without a name. A success without one belongs to nobody: servers differ in whether
  // they end their answer about the VFO option.
  const bool nameless = reply.Command.empty() && reply.Code < 0;
  if (reply.Command != asked.Command && !nameless) return;
  Outstanding done = std::move(out_.front());
  out_.pop_front();
  since_ = clock_.Now();
  const auto sameKind = [&](const Outstanding& other) { return other.IsRead == done.IsRead; };
  if (std::ranges::none_of(out_, sameKind)) (done.IsRead ? readOut_ : setOut_) = false;
  if (rprt::RadioIsSilent(reply.Code)) {
    silentWhy_ = kRadioSilent;
  } else if (ready_ && rprt::RadioAnswered(reply.Code)) {
    heard_ = true;
    heardAt_ = clock_.Now();
    silentWhy_.clear();
    watch_.Heard();
  }
  if (done.Request.Done) done.Request.Done(&reply);
  SendNextSet();
}

void RigctldClient::Tick() {
  if (!open_) return;
  const auto now = clock_.Now();
  if (watch_.IsLost()) {
    if (watch_.TryDue()) Connect();
  } else if (!connected_) {
    if (now - since_ > kConnectTime) Fail("Castelon at " + endpoint_.Text() + " cannot be reached", false);
  } else if (!out_.empty() && now - since_ > std::max(patience_, out_.front().Request.LeastDeadline)) {
    Fail("Castelon at " + endpoint_.Text() + " does not answer", true);
  }
}

void RigctldClient::Ended(std::string_view why) {
  const bool waited = connected_ && !heard_ && clock_.Now() - connectedAt_ >= kWaitsForRadio;
  Fail("Castelon at " + endpoint_.Text() + " is gone: " + std::string(why), waited);
}

void RigctldClient::Fail(std::string why, bool serverThere) {
  if (serverThere)
    silentWhy_ = kRadioSilent;
  else
    silentWhy_.clear();
  watch_.Lost(std::move(why));
  socket_.Close();
  const auto unanswered = std::exchange(out_, {});
  const auto dropped = std::exchange(unsent_, {});
  DropRequests();
  for (const Outstanding& request : unanswered)
    if (request.Request.Done) request.Request.Done(nullptr);
  for (const RigctldRequest& request : dropped)
    if (request.Done) request.Done(nullptr);
}

void RigctldClient::DropRequests() {
  reader_.Reset();
  connected_ = ready_ = takesVfo_ = readOut_ = setOut_ = heard_ = false;
}

LinkHealth RigctldClient::Health() const {
  LinkHealth health = watch_.Health();
  // Attempts begin anew; the silence does not.
  health.Since = heardAt_;
  // A slow radio is asked slowly: not time alone, but a request without an answer is silence here.
  if (health.State == LinkState::Silent) health.State = heard_ ? LinkState::Live : LinkState::Connecting;
  if (health.State != LinkState::Closed && !silentWhy_.empty()) {
    health.State = LinkState::Silent;
    health.Why = silentWhy_;
  }
  return health;
}

}  // namespace spectrino
