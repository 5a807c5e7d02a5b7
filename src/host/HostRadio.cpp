#include "host/HostRadio.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/HostModes.h"
#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

/// A radio that owes no answer is waited for by the server, up to its own time-out.
constexpr auto kRawDeadline = 5s;
/// A server whose radio sends its scope may be busy with a spoilt reply for so long.
constexpr auto kPatienceBeside = 5s;
/// FE FE controller radio, FB or FA, FD: what an Icom says to a command that asks nothing.
constexpr const char* kCivAnswerBytes = "6";
/// What a radio says to a command of its own kind may come a little after the server answered.
constexpr auto kRawRest = 60ms;
constexpr std::size_t kFrequencyDigits = 11;
constexpr double kMostMHz = 1e6;
constexpr std::size_t kAddressDigits = 2;
constexpr std::string_view kUsualController = "E0";

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool IsHex(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

std::string HertzText(double hz) {
  return std::to_string(std::llround(hz));
}

// "FA" or "FB" | 11 digits, Hz | ";"
std::optional<std::pair<Vfo, double>> FrequencyIn(std::string_view text) {
  text = Trim(text);
  if (text.ends_with(';')) text.remove_suffix(1);
  if (text.size() != 2 + kFrequencyDigits || text[0] != 'F' || (text[1] != 'A' && text[1] != 'B'))
    return std::nullopt;
  const std::string_view digits = text.substr(2);
  if (!std::ranges::all_of(digits, IsDigit)) return std::nullopt;
  return std::pair(text[1] == 'A' ? Vfo::A : Vfo::B, Val(digits));
}

/// "\0xFE\0x94" of "FE94"; empty when it is not pairs of hexadecimal digits.
std::string EscapedBytes(std::string_view hex) {
  if (hex.empty() || hex.size() % 2 != 0 || !std::ranges::all_of(hex, IsHex)) return {};
  std::string escaped;
  for (std::size_t at = 0; at < hex.size(); at += 2) escaped.append("\\0x").append(hex.substr(at, 2));
  return escaped;
}

/// Two hexadecimal digits of a file or a model; empty where it is anything else.
std::string AddressIn(std::string_view text) {
  text = Trim(text);
  return text.size() == kAddressDigits && std::ranges::all_of(text, IsHex) ? std::string(text) : "";
}

}  // namespace

HostRadio::HostRadio(ByteSocket& socket, SettingsStore& store, Notifier& user, const Clock& clock)
    : store_(store),
      user_(user),
      clock_(clock),
      client_(socket, clock),
      poll_(client_, state_, clock),
      bands_(store) {
  client_.Ready = [this](const RigctldReply& caps) { Found(caps); };
}

void HostRadio::Open(const RigctldEndpoint& endpoint, HostReads reads) {
  Close();
  reads_ = reads;
  client_.Open(endpoint, SetupSection(store_).Read(key::kReconnect),
               reads == HostReads::Beside ? kPatienceBeside : RigctldClient::kPatience);
}

void HostRadio::Close() {
  client_.Close();
  hostFound_ = false;
  rawOut_ = 0;
  state_ = {};
  usualAddress_.clear();
  wantedFreq_ = {};
  wantedMode_.reset();
}

void HostRadio::Tick() {
  client_.Tick();
  if (rawOut_ == 0) poll_.Tick();
}

void HostRadio::Found(const RigctldReply& caps) {
  const std::string before = state_.Model;
  poll_.Begin(reads_, caps);
  if (state_.Model != before) usualAddress_.clear();
  // What the radio took on an earlier connection no read will confirm as the answer to it.
  for (std::optional<Wanted>* wanted : {&wantedFreq_[0], &wantedFreq_[1], &wantedMode_})
    if (*wanted && (*wanted)->TakenAfter) wanted->reset();
  user_.Log(LogArea::Host, "found: " + state_.Model + ", Hamlib model " + std::to_string(state_.ModelNumber) +
                               (client_.TakesVfo() ? "" : ", takes no VFO"));
}

bool HostRadio::Stands(const std::optional<Wanted>& wanted, Vfo vfo) const {
  if (!wanted) return false;
  return !wanted->TakenAfter || state_.Of(vfo).Read <= *wanted->TakenAfter;
}

double HostRadio::HostGetFrequency(Vfo vfo) const {
  if (!hostFound_) return 0;
  const std::optional<Wanted>& wanted = wantedFreq_[vfo == Vfo::A ? 0 : 1];
  return (Stands(wanted, vfo) ? wanted->FreqHz : state_.Of(vfo).FreqHz) / 1e6;
}

int HostRadio::HostGetMode(Vfo vfo) const {
  if (!hostFound_) return hostmode::kUnknown;
  return vfo == Vfo::A && Stands(wantedMode_, vfo) ? wantedMode_->Mode : state_.Of(vfo).Mode;
}

int HostRadio::HostGetBand() const {
  return bands_.ButtonOf(HostGetFrequency(Vfo::A));
}

// What the radio says to a request: taken, and the next read tells what came of it; or refused.
std::function<void(const RigctldReply*)> HostRadio::Settling(std::optional<Wanted>& wanted, Vfo vfo,
                                                             std::string what) {
  return [this, &wanted, vfo, what = std::move(what), number = wanted->Number](const RigctldReply* reply) {
    const bool newest = wanted && wanted->Number == number;
    if (reply != nullptr && reply->Code == rprt::kDone) {
      if (!newest) return;
      // Where nothing reads VFO B it is where it was put.
      if (HostVfo& told = state_.Of(vfo); told.Read == 0 && wanted->FreqHz > 0) told.FreqHz = wanted->FreqHz;
      wanted->TakenAfter = poll_.ReadsSent();
      poll_.ReadSoon(vfo);
      return;
    }
    if (newest) wanted.reset();
    user_.Log(LogArea::Host,
              what + (reply == nullptr ? ": no answer" : ": refused, RPRT " + std::to_string(reply->Code)));
  };
}

void HostRadio::HostSetFrequency(double freqMHz, Vfo vfo) {
  if (!hostFound_ || !(freqMHz > 0 && freqMHz < kMostMHz)) return;
  if (vfo == Vfo::B && !client_.TakesVfo()) {
    user_.Log(LogArea::Host, "VFO B cannot be set: this server takes no VFO");
    return;
  }
  const std::string hertz = HertzText(freqMHz * 1e6);
  std::optional<Wanted>& wanted = WantedFreq(vfo);
  frequencyAsked_ = clock_.Now();
  wanted = {Val(hertz), hostmode::kUnknown, ++wantedCount_, std::nullopt};
  client_.Set({.Command = "set_freq",
               .Arguments = hertz,
               .Of = vfo,
               .Done = Settling(wanted, vfo, "frequency " + hertz),
               .Slot = vfo == Vfo::A ? "frequency A" : "frequency B",
               .LeavesAnyway = true});
}

// The radio's own filter for the mode stays: -1 asks for no width.
void HostRadio::HostSetMode(int hostMode, bool dataFamily) {
  const std::string_view word = WordOfHostMode(hostMode, dataFamily);
  if (!hostFound_ || word.empty()) return;
  wantedMode_ = {0, hostMode, ++wantedCount_, std::nullopt};
  client_.Set({.Command = "set_mode",
               .Arguments = std::string(word) + " -1",
               .Of = Vfo::A,
               .Done = Settling(wantedMode_, Vfo::A, "mode " + std::string(word)),
               .Slot = "mode",
               .LeavesAnyway = true});
}

// Some radios put VFO B elsewhere with it: where it is now is asked for again.
void HostRadio::HostSetSplit(bool on) {
  if (!hostFound_) return;
  const double subMHz = HostGetFrequency(Vfo::B);
  client_.Set({.Command = "set_split_vfo",
               .Arguments = on ? "1 VFOB" : "0 VFOA",
               .Of = Vfo::A,
               .Done = [this](const RigctldReply*) { poll_.ReadSoon(Vfo::A); },
               .Slot = "split"});
  if (on && subMHz > 0) HostSetFrequency(subMHz, Vfo::B);
}

// Never replaced by a newer one: each has to reach the radio.
void HostRadio::HostTransmit(bool on) {
  if (!hostFound_) return;
  client_.Set({.Command = "set_ptt", .Arguments = on ? "1" : "0", .Of = Vfo::A, .Done = {}, .Slot = {}});
}

bool HostRadio::SetsWidth(Vfo vfo) const {
  const HostVfo& told = state_.Of(vfo);
  if (!hostFound_ || !state_.SetsMode || !(told.WidthHz > 0) || told.ModeWord.empty()) return false;
  return vfo == Vfo::A ? !Stands(wantedMode_, vfo) : client_.TakesVfo();
}

void HostRadio::HostSetWidth(double widthHz, Vfo vfo) {
  if (!SetsWidth(vfo) || !(widthHz > 0)) return;
  client_.Set({.Command = "set_mode",
               .Arguments = state_.Of(vfo).ModeWord + ' ' + HertzText(widthHz),
               .Of = vfo,
               .Done = [this, vfo](const RigctldReply*) { poll_.ReadSoon(vfo); },
               .Slot = vfo == Vfo::A ? "width A" : "width B"});
}

void HostRadio::HostSetIfShift(double shiftHz) {
  if (!hostFound_ || !state_.SetsIfShift) return;
  client_.Set({.Command = "set_level",
               .Arguments = "IF " + HertzText(shiftHz),
               .Of = Vfo::A,
               .Done = [this](const RigctldReply*) { poll_.ReadShiftSoon(); },
               .Slot = "IF shift"});
}

void HostRadio::RememberBand() {
  if (hostFound_) bands_.Keep({HostGetFrequency(Vfo::A), HostGetMode(Vfo::A)});
}

void HostRadio::HostSetBand(int band) {
  if (!hostFound_ || band < 0 || band >= kBandButtonCount || band == HostGetBand()) return;
  RememberBand();
  const HostBandRecord record = bands_.Recall(band);
  HostSetFrequency(record.FreqMHz, Vfo::A);
  HostSetMode(record.Mode);
}

void HostRadio::HostSendCommand(HostCommandKind kind, std::string_view text) {
  if (!hostFound_ || Trim(text).empty()) return;
  // 13 characters are no pairs of digits: no command of an Icom is taken for a frequency.
  if (const auto frequency = FrequencyIn(text))
    HostSetFrequency(frequency->second / 1e6, frequency->first);
  else if (kind == HostCommandKind::CivHex)
    SendCiv(text);
  else
    SendRaw("send_cmd", std::string(Trim(text)));
}

// FE FE | radio | controller | command, sub-command, data | FD, each byte as "\0x" and two digits
void HostRadio::SendCiv(std::string_view hex) {
  const SetupSection setup(store_);
  // The stored address may be that of another radio, on its serial line.
  const std::string address = AddressIn(usualAddress_.empty() ? setup.Read(key::kIcAddress) : usualAddress_);
  std::string controller = AddressIn(setup.Read(key::kControllerAddress));
  if (controller.empty()) controller = kUsualController;
  const std::string head = address.empty() ? "" : EscapedBytes(address + controller);
  const std::string body = EscapedBytes(Trim(hex));
  if (head.empty() || body.empty()) {
    user_.ShowStatus(body.empty() ? "Not sent: a macro for an Icom is pairs of hexadecimal digits."
                                  : "Not sent: the setup does not say which address the Icom has.");
    return;
  }
  SendRaw("send_cmd_rx", "\\0xFE\\0xFE" + head + body + "\\0xFD " + kCivAnswerBytes);
}

void HostRadio::SendRaw(std::string_view command, std::string arguments) {
  ++rawOut_;
  client_.Set({.Command = command,
               .Arguments = std::move(arguments),
               .Of = {},
               .Done =
                   [this](const RigctldReply*) {
                     --rawOut_;
                     rawEnd_ = clock_.Now();
                     poll_.Rest(kRawRest);
                   },
               .Slot = {},
               .LeastDeadline = kRawDeadline});
}

void HostRadio::SetFunction(std::string_view name, bool on, std::string_view slot) {
  if (!hostFound_) return;
  client_.Set({.Command = "set_func",
               .Arguments = std::string(name) + (on ? " 1" : " 0"),
               .Of = Vfo::A,
               .Done = {},
               .Slot = slot});
}

bool HostRadio::MayRead() const {
  return rawOut_ == 0 && client_.ReadsIdle() && clock_.Now() - rawEnd_ >= kRawRest;
}

void HostRadio::Read(std::string_view command, std::string_view argument,
                     std::function<void(const RigctldReply*)> done) {
  client_.Read({.Command = command,
                .Arguments = std::string(argument),
                .Of = Vfo::A,
                .Done = std::move(done),
                .Slot = {}});
}

void HostRadio::SayGoodbye(std::string_view command, std::string_view arguments) {
  client_.SayGoodbye(
      {.Command = command, .Arguments = std::string(arguments), .Of = Vfo::A, .Done = {}, .Slot = {}});
}

}  // namespace spectrino
