#include "adapters/dbus/DbusBridgePort.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <utility>

namespace spectrino {
namespace {

const QString kService = QStringLiteral("org.spectrino.Bridge");
const QString kPath = QStringLiteral("/org/spectrino/Bridge");
const QString kInterface = QStringLiteral("org.spectrino.Bridge1");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr int kDeadlineMs = 2000;
constexpr qsizetype kLongestText = 64;

QDBusMessage CallOf(const QString& interface, const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, interface, method);
  call.setAutoStartService(false);
  call.setArguments(arguments);
  return call;
}

}  // namespace

DbusBridgePort::DbusBridgePort() : bus_(QDBusConnection::sessionBus()) {}

DbusBridgePort::~DbusBridgePort() {
  Close();
}

void DbusBridgePort::Open() {
  Close();
  if (!bus_.isConnected()) {
    QTimer::singleShot(0, this, [this, opened = opened_] {
      if (opened == opened_) Leave("there is no session bus.");
    });
    return;
  }
  service_ = std::make_unique<QDBusServiceWatcher>(kService, bus_);
  connect(service_.get(), &QDBusServiceWatcher::serviceRegistered, this, [this] { Ask(); });
  connect(service_.get(), &QDBusServiceWatcher::serviceUnregistered, this, [this] {
    ++opened_;  // what it still owed is void
    Leave("the bridge was ended.");
  });
  // Changes first, then all that stands: nothing that is told in between is lost.
  bus_.connect(kService, kPath, kProperties, "PropertiesChanged", this,
               SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
  Ask();
}

void DbusBridgePort::Close() {
  ++opened_;
  if (service_ == nullptr) return;
  bus_.disconnect(kService, kPath, kProperties, "PropertiesChanged", this,
                  SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
  service_.reset();
  found_ = false;
}

void DbusBridgePort::Ask() {
  const auto call = bus_.asyncCall(CallOf(kProperties, "GetAll", {kInterface}), kDeadlineMs);
  auto* answer = new QDBusPendingCallWatcher(call, this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, opened = opened_] {
    answer->deleteLater();
    if (opened == opened_) TakeAnswer(*answer);
  });
}

void DbusBridgePort::TakeAnswer(const QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<QVariantMap> reply = call;
  if (reply.isError()) {
    const QString name = reply.error().name();
    const bool nobody = name.endsWith("NameHasNoOwner") || name.endsWith("ServiceUnknown");
    Leave(nobody ? "the bridge is not running." : reply.error().message().toStdString() + ".");
    return;
  }
  found_ = true;
  if (Found) Found();
  Take(reply.value());
}

void DbusBridgePort::Leave(const std::string& why) {
  found_ = false;
  if (Missing) Missing(why);
}

void DbusBridgePort::PropertiesChanged(const QString& interface, const QVariantMap& changed,
                                       const QStringList& /*withdrawn*/) {
  if (interface == kInterface && found_) Take(changed);
}

void DbusBridgePort::Take(const QVariantMap& items) {
  for (std::size_t i = 0; i < kBridgeItems.size(); ++i) {
    const auto at = items.find(kBridgeItems[i]);
    // Text and no other kind; a number of any length that no radio has is text all the same.
    if (at == items.end() || at->metaType().id() != QMetaType::QString) continue;
    if (Told) Told(static_cast<BridgeItem>(i), at->toString().left(kLongestText).toStdString());
  }
}

void DbusBridgePort::Command(std::string_view text) {
  if (!found_) return;
  const QString command = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const auto call = bus_.asyncCall(CallOf(kInterface, "Command", {command}), kDeadlineMs);
  auto* answer = new QDBusPendingCallWatcher(call, this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, opened = opened_] {
    answer->deleteLater();
    if (opened == opened_ && answer->isError() && Refused) Refused(answer->error().message().toStdString());
  });
}

}  // namespace spectrino
