#include "k4/K4Session.h"

#include <array>
#include <utility>

#include "k4/PanStream.h"
#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

/// No reply is as long: what has no ";" within this is not a K4's.
constexpr std::size_t kMostTextBytes = 64 * 1024;
constexpr int kUsualCatPort = 9200;
constexpr int kUsualPanPort = 9201;

// "AI5;" makes the radio tell changes by itself; the rest asks for what the panel shows.
constexpr auto kRefresh = std::to_array<std::string_view>(
    {"AI5;", "K41;", "TM1;", "#SCL;", "#SPN;", "MD$;",  "#REF;", "#SCL;",   "#FXT;", "ME0102;",
     "FA;",  "FB;",  "MD;",  "FT;",   "AG;",   "AG$;",  "BL;",   "BW;",     "BW$;",  "IS;",
     "IS$;", "CW;",  "DV;",  "SB;",   "DT;",   "DT$;",  "NM;",   "NM$;",    "NA;",   "NA$;",
     "RT;",  "XT;",  "FP;",  "FP$;",  "SMH;",  "SMH$;", "AP;",   "AP$;",    "GT;",   "GT$;",
     "NR;",  "NR$;", "NB;",  "NB$;",  "AN;",   "PA$;",  "PA;",   "RA$;",    "RA;",   "VX;",
     "RO;",  "BS;",  "AR;",  "AR$;",  "TS;",   "AT;",   "#MP$;", "ME0070;", "#DPM;", "#HDPM;"});
constexpr auto kPollBefore =
    std::to_array<std::string_view>({"#SCL;", "#SPN;", "#REF;", "#SCL;", "#FXT;", "TQX;"});
constexpr auto kPollAfter = std::to_array<std::string_view>({"SMH;", "SMH$;", "#HDPM;", "#DPM;"});

// Text that is not a number, or none, reads as 0.
int PortOr(int port, int usual) {
  return port == 0 ? usual : port;
}

}  // namespace

K4Session::K4Session(K4SessionParts parts)
    : parts_(std::move(parts)), assembler_([this](std::span<const std::uint8_t> frames) {
        const std::uint64_t before = parts_.State.K4PanChannels[kPanMain].Serial;
        ParseK4PanFrames(frames, parts_.State);
        if (parts_.State.K4PanChannels[kPanMain].Serial != before) lineArrived_ = parts_.Time.Now();
      }) {
  parts_.WSCat.Connected = [this] { SocketConnected(catConnected_); };
  parts_.WSPan.Connected = [this] { SocketConnected(panConnected_); };
  parts_.WSCat.Closed = [this] { SocketEnded(catConnected_, "CAT", "closed by the radio"); };
  parts_.WSPan.Closed = [this] { SocketEnded(panConnected_, "panadapter", "closed by the radio"); };
  parts_.WSCat.Error = [this](std::string_view text) { SocketEnded(catConnected_, "CAT", text); };
  parts_.WSPan.Error = [this](std::string_view text) { SocketEnded(panConnected_, "panadapter", text); };
  parts_.WSCat.DataArrival = [this](std::span<const std::uint8_t> bytes) { CatArrived(bytes); };
  parts_.WSPan.DataArrival = [this](std::span<const std::uint8_t> bytes) { PanArrived(bytes); };
}

K4Session::~K4Session() {
  for (ByteSocket* socket : {&parts_.WSCat, &parts_.WSPan}) {
    socket->Connected = nullptr;
    socket->Closed = nullptr;
    socket->Error = nullptr;
    socket->DataArrival = nullptr;
    socket->Close();
  }
}

K4ConnectOutcome K4Session::Start() {
  K4State& state = parts_.State;
  MonitorSelected_ = false;
  state.SubRxOn = -1;
  state.K4MonitorKind = -1;
  state.MinipanOn = true;
  parts_.View.TickMinipan();
  state.K4Active = true;
  state.K4SpanPreset = 1;
  parts_.View.SelectSpanPreset(1);
  K4ConnectOutcome outcome = TCPConnect();
  if (outcome.Failed) {
    state.K4Active = false;
    return outcome;
  }
  // Again: what the radio missed while it was still being set up is asked for a second time.
  RefreshK4();
  timerEnabled_ = true;
  state.K4PanDataSeen = false;
  state.RxSuffix.clear();
  parts_.View.ClearBset();
  return outcome;
}

void K4Session::Stop() {
  if (stopping_) return;
  stopping_ = true;
  timerEnabled_ = false;
  if (parts_.State.K4Connected && parts_.SelectMonitor) parts_.SelectMonitor(0);
  CloseSockets();
  parts_.State.K4PanDataSeen = false;
  parts_.State.K4Active = false;
  stopping_ = false;
}

K4ConnectOutcome K4Session::TCPConnect() {
  while (true) {
    const Target target = ReadTarget();
    if (target.Address.empty()) return {true, "TCP Port not defined"};
    RestartMinipan();
    if (target.Host.empty()) return GiveUp(target);
    const bool connected = Attempt(target);
    if (Abandoned()) {
      CloseSockets();
      return {true, {}};
    }
    if (connected) {
      SendOpening(target);
      return {};
    }
    if (!AskRetry()) return GiveUp(target);
  }
}

K4Session::Target K4Session::ReadTarget() const {
  const SetupSection setup(parts_.Store);
  Target target;
  target.Address = setup.Read(key::kK4Address);
  target.Host = Trim(std::string_view(target.Address).substr(0, target.Address.find(':')));
  target.CatPort = PortOr(setup.Read(key::kK4CatPort), kUsualCatPort);
  target.PanPort = PortOr(setup.Read(key::kK4PanPort), kUsualPanPort);
  target.TimeOut = std::chrono::milliseconds(setup.Read(key::kTcpTimeOutMs));
  return target;
}

void K4Session::RestartMinipan() {
  parts_.State.MinipanOn = true;
  parts_.View.TickMinipan();
  parts_.State.MinipanHistoryCount = 0;
}

bool K4Session::Attempt(const Target& target) {
  CloseSockets();
  // The hourglass before the first pause: events flow in every one of them, and K4Connected, cleared above,
  // may be set by any. It must not be cleared again.
  parts_.View.ShowWaiting(true);
  parts_.WSPan.Connect(target.Host, static_cast<std::uint16_t>(target.PanPort));
  parts_.Pump.Wait(50ms);
  if (!Abandoned()) {
    parts_.WSCat.Connect(target.Host, static_cast<std::uint16_t>(target.CatPort));
    parts_.Pump.Wait(50ms);
  }
  const auto start = parts_.Time.Now();
  do {
    parts_.Pump.Wait(30ms);
  } while (!parts_.State.K4Connected && !Abandoned() && parts_.Time.Now() - start <= target.TimeOut);
  parts_.View.ShowWaiting(false);
  return parts_.State.K4Connected;
}

bool K4Session::AskRetry() {
  const K4ConnectTexts shown = LoadK4ConnectTexts(parts_.Store);
  parts_.View.AllowAlwaysOnTop(false);
  const std::optional<K4ConnectTexts> answer = parts_.Retry.Ask(K4RetryMessage(shown), shown);
  parts_.View.AllowAlwaysOnTop(true);
  if (!answer) return false;
  SaveK4ConnectTexts(parts_.Store, *answer);
  return true;
}

K4ConnectOutcome K4Session::GiveUp(const Target& target) {
  parts_.View.ShowWaiting(false);
  // An answer may still be on its way; nobody waits for it any more.
  CloseSockets();
  parts_.Pump.Wait(30ms);
  if (Abandoned()) return {true, {}};
  return {true, "TCP ERROR - HOST = " + target.Host + " PORTPAN = " + std::to_string(target.PanPort) +
                    " PORTCAT = " + std::to_string(target.CatPort)};
}

void K4Session::SendOpening(const Target& target) {
  parts_.User.ShowStatus("Connected to " + target.Address + ":" + std::to_string(target.CatPort) + "/" +
                         std::to_string(target.PanPort));
  parts_.Pump.Wait(250ms);
  parts_.Pump.Wait(250ms);
  if (catConnected_ && panConnected_)
    parts_.User.ShowStatus("");  // it was there long enough to be read
  else
    ReportMissingSocket(target);
  SendPan("PING");
  SendCat("ID;");
  SendCat("ME0005;");
  RefreshK4();
  // The reply to "ME0005;" decides whether there is a sub mini-pan.
  parts_.Pump.Wait(30ms);
  SendPan("A1");
  SendPan("B0");
  SendPan("Y1");
  SendPan(parts_.State.IsK4D ? "Z1" : "Z0");
  if (parts_.State.SubRxOn == 1 || parts_.View.SubTicked()) SendK4("#HDPM1;");
  parts_.Pump.Wait(30ms);
}

// One socket is enough to be connected, but not to work: say what is missing.
void K4Session::ReportMissingSocket(const Target& target) {
  if (!parts_.State.K4Connected) return;
  const std::string missing = catConnected_ ? "panadapter port " + std::to_string(target.PanPort)
                                            : "CAT port " + std::to_string(target.CatPort);
  parts_.User.ShowStatus("The K4's " + missing + " does not answer");
}

void K4Session::CloseSockets() {
  parts_.WSPan.Close();
  parts_.WSCat.Close();
  catConnected_ = panConnected_ = false;
  parts_.State.K4Connected = false;
  // Halves of a reply or a frame do not continue in another connection.
  K4RxBuffer_.clear();
  assembler_.Reset();
}

void K4Session::RefreshK4() {
  for (const std::string_view command : kRefresh) SendCat(command);
}

void K4Session::tmrK4_Timer() {
  if (!timerEnabled_) return;
  K4State& state = parts_.State;
  if (!state.K4Active || !state.K4Connected) {
    timerEnabled_ = false;
    return;
  }
  for (const std::string_view command : kPollBefore) SendCat(command);
  if (state.SubRxOn != -1 && !MonitorSelected_) {
    MonitorSelected_ = true;  // first: the call turns the event loop, and the timer with it
    if (parts_.SelectMonitor) parts_.SelectMonitor(state.SubRxOn);
  }
  for (const std::string_view command : kPollAfter) SendCat(command);
}

void K4Session::SendK4(std::string_view command) {
  std::string text(Trim(command));
  if (!text.ends_with(';')) text += ';';
  SendCat(text);
}

void K4Session::SendCat(std::string_view text) {
  if (parts_.State.K4Connected) parts_.WSCat.Send(text);
}

void K4Session::SendPan(std::string_view line) {
  if (parts_.State.K4Connected) parts_.WSPan.Send(std::string(line) + "\r\n");
}

void K4Session::SocketConnected(bool& connected) {
  connected = true;
  parts_.State.K4Connected = true;
}

void K4Session::SocketEnded(bool& connected, std::string_view name, std::string_view why) {
  parts_.User.Log(LogArea::K4, std::string(name) + " connection: " + std::string(why));
  // The refusal of one port does not undo the other: one is enough.
  const bool wasConnected = std::exchange(connected, false);
  if (!wasConnected && (catConnected_ || panConnected_)) return;
  const bool lost = std::exchange(parts_.State.K4Connected, false);
  if (lost && parts_.State.K4Active) {
    parts_.User.ShowStatus("Connection to the K4 lost. Press Stop, then Start to connect again.");
  }
}

void K4Session::CatArrived(std::span<const std::uint8_t> bytes) {
  K4RxBuffer_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (!parts_.State.K4ParserBusy && parts_.ParseReplies) parts_.ParseReplies(K4RxBuffer_);
  if (K4RxBuffer_.size() > kMostTextBytes && K4RxBuffer_.find(';') == std::string::npos) {
    parts_.User.Log(LogArea::K4, "dropped " + std::to_string(K4RxBuffer_.size()) + " bytes without \";\"");
    K4RxBuffer_.clear();
  }
}

void K4Session::PanArrived(std::span<const std::uint8_t> bytes) {
  if (parts_.State.K4Connected) assembler_.Feed(bytes);
}

}  // namespace spectrino
