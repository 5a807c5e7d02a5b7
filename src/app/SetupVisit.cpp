#include "app/SetupVisit.h"

#include <utility>

#include "app/Manual.h"
#include "app/ServerProbe.h"
#include "host/HostBackend.h"

namespace spectrino {
namespace {

using setup::FoundServer;

FoundServer::Kind KindOf(PortHolder holder) {
  switch (holder) {
    case PortHolder::Nobody:
      return FoundServer::Kind::Nobody;
    case PortHolder::CatServer:
      return FoundServer::Kind::CatServer;
    case PortHolder::Another:
      break;
  }
  return FoundServer::Kind::Another;
}

/// What stands where the host program is looked for with this text as its endpoint.
void LookForServer(const SetupVisit& visit, const std::string& typed, QObject* context,
                   const std::function<void(const FoundServer&)>& answered) {
  const RigctldEndpoint endpoint = HostEndpoint(visit.Store, typed);
  FoundServer found{.Where = endpoint.Text()};
  if (!IsThisMachine(endpoint.Host)) {
    answered(found);
    return;
  }
  AskPort(endpoint.Host, endpoint.Port, context,
          [&server = visit.Server, answered, endpoint, found](PortHolder holder) mutable {
            const bool ours = server.ServesAt(LoopbackOf(endpoint.Host), endpoint.Port);
            found.What = ours && holder != PortHolder::Nobody ? FoundServer::Kind::Ours : KindOf(holder);
            answered(found);
          });
}

}  // namespace

frmSetupPan* OpenSetup(const SetupVisit& visit, bool running, QWidget* window) {
  SetupWorld world{.Store = visit.Store, .Ports = &visit.Ports, .Running = running};
  world.ListSources = [&devices = visit.Devices] {
    devices.InitDevices();
    return devices.Sources();
  };
  world.OpenManual = OpenManual;
  world.CatServerPlace = QString::fromStdString(visit.Cat.Text());
  world.AskRigs = AskRigctlList;
  world.LookForServer = [visit](const std::string& typed, QObject* context, auto answered) {
    LookForServer(visit, typed, context, answered);
  };
  if (visit.User.Unattended()) {
    world.ShowMessage = [&user = visit.User](const QString& text) {
      user.ShowMessage("Spectrino", text.toStdString(), Severity::Information);
    };
    world.AskOkCancel = [show = world.ShowMessage](const QString& text) {
      show(text);
      return false;
    };
  }
  auto* dialog = new frmSetupPan(std::move(world), window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  return dialog;
}

}  // namespace spectrino
