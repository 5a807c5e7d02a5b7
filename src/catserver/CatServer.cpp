#include "catserver/CatServer.h"

#include <algorithm>
#include <utility>

namespace spectrino {

CatServer::CatServer(const Parts& parts)
    : parts_(parts),
      watch_(parts.Time),
      line_(parts.Radio, {.Send = [this](std::string_view bytes) { parts_.Terminal.Write(bytes); },
                          .Told =
                              [this](const CatWish& wish, CatResult result) {
                                if (wish.What == CatWish::Kind::Transmit && static_cast<int>(result) >= 0)
                                  lineTransmits_ = wish.On;
                                Tell("The terminal's program", wish, result);
                              }}) {
  parts_.Listener.Accepted = [this](Visitor visitor) { Welcome(std::move(visitor)); };
  parts_.Terminal.DataArrival = [this](std::span<const std::uint8_t> bytes) {
    static_cast<void>(line_.Feed(bytes));
  };
  parts_.Terminal.Left = [this] {
    line_.Reset();
    if (std::exchange(lineTransmits_, false)) parts_.Radio.StopTransmitting();
  };
}

CatServer::~CatServer() {
  Told = nullptr;
  TroubleChanged = nullptr;
  Serve({});
  parts_.Listener.Accepted = nullptr;
  parts_.Terminal.DataArrival = nullptr;
  parts_.Terminal.Left = nullptr;
}

void CatServer::Serve(const CatServerTask& task) {
  const CatServerTask before = std::exchange(task_, task);
  if (before.Terminal != task.Terminal) task.Terminal ? OpenTerminal() : CloseTerminal();
  const bool same =
      before.Socket == task.Socket && before.Address == task.Address && before.Port == task.Port;
  if (same) return;
  parts_.Listener.Close();
  clients_.clear();
  watch_.End();
  ShowTrouble({});
  if (task.Socket) Listen();
}

void CatServer::Listen() {
  watch_.Begin();
  const std::string problem = parts_.Listener.Listen(task_.Address, static_cast<std::uint16_t>(task_.Port));
  if (problem.empty()) {
    watch_.Heard();
    ShowTrouble({});
    return;
  }
  watch_.Lost(problem);
  ShowTrouble("Other programs cannot use the radio: " + problem);
}

void CatServer::Tick() {
  if (watch_.TryDue()) Listen();
  for (auto at = clients_.begin(); at != clients_.end();) {
    CatClient& client = *at++;  // it may be gone behind the call
    client.Tick();
  }
  if (line_.Busy()) static_cast<void>(line_.Tick());
}

bool CatServer::Busy() const {
  return line_.Busy() || std::ranges::any_of(clients_, [](const CatClient& client) { return client.Busy(); });
}

void CatServer::Welcome(Visitor visitor) {
  if (clients_.size() >= kMostClients) return;
  CatClient& client = clients_.emplace_back(
      std::move(visitor), parts_.Radio,
      CatClient::Ways{.Told = [this](const CatClient& who, const CatWish& wish,
                                     CatResult result) { Tell(who.Name(), wish, result); },
                      .Ended = [this](const CatClient& who) { Remove(&who); }});
  if (!AskName) return;
  AskName(client.Peer(), [this, port = client.Peer().Port](const std::string& name) {
    for (CatClient& one : clients_)
      if (one.Peer().Port == port) one.SetName(ProgramName(name));
  });
}

void CatServer::Remove(const CatClient* client) {
  const auto at = std::ranges::find_if(clients_, [client](const CatClient& one) { return &one == client; });
  if (at == clients_.end()) return;
  // Taken out first: what its end does to the radio may lead back here.
  std::list<CatClient> gone;
  gone.splice(gone.begin(), clients_, at);
}

void CatServer::OpenTerminal() {
  if (const std::string problem = parts_.Terminal.Open(); !problem.empty())
    ShowTrouble("Other programs find no serial port here: " + problem);
}

void CatServer::CloseTerminal() {
  parts_.Terminal.Close();
  line_.Reset();
  if (std::exchange(lineTransmits_, false)) parts_.Radio.StopTransmitting();
}

void CatServer::StopTransmitting() {
  for (CatClient& client : clients_) client.StopTransmitting();
  if (std::exchange(lineTransmits_, false)) parts_.Radio.StopTransmitting();
}

void CatServer::Tell(const std::string& who, const CatWish& wish, CatResult result) {
  if (!Told) return;
  if (result == CatResult::Refused)
    Told(who + " wants to transmit: Setup does not allow it");
  else if (static_cast<int>(result) >= 0)
    Told(who + ' ' + wish.Text());
}

void CatServer::ShowTrouble(std::string trouble) {
  if (trouble_ == trouble) return;
  trouble_ = std::move(trouble);
  if (TroubleChanged) TroubleChanged();
}

}  // namespace spectrino
