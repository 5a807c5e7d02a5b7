#include "sim/bridge/BridgeService.h"

#include <QDBusError>
#include <QDBusMessage>

namespace spectrino {
namespace {

const QString kPath = QStringLiteral("/org/spectrino/Bridge");
const QString kInterface = QStringLiteral("org.spectrino.Bridge1");
constexpr std::array kNames{"VfoAHz", "VfoBHz", "Offset", "Shift", "Bandwidth", "Bandwidth2", "Trouble"};
constexpr qsizetype kLongestCommand = 4096;

}  // namespace

std::vector<BridgeRequest> RequestsIn(const QString& text) {
  using Kind = BridgeRequest::Kind;
  std::vector<BridgeRequest> requests;
  const QStringList commands = text.left(kLongestCommand).split(';');
  // Behind the last semicolon stands nothing, or the beginning of a command that was cut.
  for (qsizetype i = 0; i + 1 < commands.size(); ++i) {
    const QString name = commands[i].left(2);
    bool isNumber = false;
    const qint64 value = commands[i].mid(2).toLongLong(&isNumber);
    if (!isNumber || value < 0) continue;
    if (name == "FA") requests.push_back({Kind::VfoA, value});
    if (name == "FB") requests.push_back({Kind::VfoB, value});
    if (name == "BN") requests.push_back({Kind::Band, value});
  }
  return requests;
}

BridgeService::BridgeService() : bus_(QDBusConnection::sessionBus()) {
  connect(this, &BridgeService::Changed, this, &BridgeService::TellChanges);
}

QString BridgeService::Serve() {
  if (!bus_.isConnected()) return "there is no session bus";
  const auto shown = QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                     QDBusConnection::ExportScriptableSignals;
  if (!bus_.registerObject(kPath, this, shown)) return bus_.lastError().message();
  if (!bus_.registerService("org.spectrino.Bridge")) return "another bridge is running";
  return {};
}

void BridgeService::TellChanges() {
  QVariantMap changed;
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    const QString now = property(kNames[i]).toString();
    if (now != told_[i]) changed[kNames[i]] = told_[i] = now;
  }
  if (changed.isEmpty()) return;
  QDBusMessage signal =
      QDBusMessage::createSignal(kPath, "org.freedesktop.DBus.Properties", "PropertiesChanged");
  signal << kInterface << changed << QStringList();
  bus_.send(signal);
}

void BridgeService::Command(const QString& text) {
  emit Commanded(text);
  for (const BridgeRequest& request : RequestsIn(text)) {
    if (Requested) Requested(request);
  }
}

}  // namespace spectrino
