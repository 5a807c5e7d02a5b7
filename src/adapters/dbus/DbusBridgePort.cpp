#include "adapters/dbus/DbusBridgePort.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace spectrino {
namespace {

using namespace std::chrono_literals;

const QString kService = QStringLiteral("org.spectrino.Bridge");
const QString kPath = QStringLiteral("/org/spectrino/Bridge");
const QString kInterface = QStringLiteral("org.spectrino.Bridge1");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
/// Arguments of other types would be read as these.
const QString kChangedTypes = QStringLiteral("sa{sv}as");
constexpr int kDeadlineMs = 2000;
constexpr qsizetype kLongestText = 200;
constexpr std::array kPauses{1s, 2s, 4s, 8s, 15s};

QDBusMessage CallOf(const QString& interface, const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, interface, method);
  call.setAutoStartService(false);
  call.setArguments(arguments);
  return call;
}

}  // namespace

DbusBridgePort::DbusBridgePort() : bus_(QDBusConnection::sessionBus()) {
  again_.setSingleShot(true);
  connect(&again_, &QTimer::timeout, this, &DbusBridgePort::Ask);
}

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
  connect(service_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString& before, const QString& now) {
            OwnerChanged(!before.isEmpty(), !now.isEmpty());
          });
  // Changes first, then all that stands: nothing that is told in between is lost.
  bus_.connect(kService, kPath, kProperties, "PropertiesChanged", kChangedTypes, this,
               SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
  Ask();
}

void DbusBridgePort::Close() {
  ++opened_;
  tries_ = 0;
  asking_ = false;
  why_.clear();
  again_.stop();
  if (service_ == nullptr) return;
  bus_.disconnect(kService, kPath, kProperties, "PropertiesChanged", kChangedTypes, this,
                  SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
  service_.reset();
  found_ = false;
}

void DbusBridgePort::OwnerChanged(bool was, bool is) {
  ++opened_;  // what an earlier one still owed is void
  tries_ = 0;
  asking_ = false;
  again_.stop();
  if (was) Leave("the bridge was ended.");
  if (is) Ask();
}

void DbusBridgePort::Ask() {
  asking_ = true;
  again_.stop();
  const auto call = bus_.asyncCall(CallOf(kProperties, "GetAll", {kInterface}), kDeadlineMs);
  auto* answer = new QDBusPendingCallWatcher(call, this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, opened = opened_] {
    answer->deleteLater();
    if (opened != opened_) return;
    asking_ = false;
    TakeAnswer(*answer);
  });
}

void DbusBridgePort::TakeAnswer(const QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<QVariantMap> reply = call;
  if (reply.isError()) {
    const QString name = reply.error().name();
    const bool nobody = name.endsWith("NameHasNoOwner") || name.endsWith("ServiceUnknown");
    if (!nobody) again_.start(kPauses[std::min(tries_++, kPauses.size() - 1)]);
    Leave(nobody ? "the bridge is not running." : reply.error().message().toStdString() + ".");
    return;
  }
  tries_ = 0;
  why_.clear();
  if (!std::exchange(found_, true) && Found) Found();
  Take(reply.value());
}

void DbusBridgePort::Leave(const std::string& why) {
  // Failed attempts are no news one by one.
  const bool news = std::exchange(found_, false) || why != why_;
  why_ = why;
  if (news && Missing) Missing(why);
}

void DbusBridgePort::PropertiesChanged(const QString& interface, const QVariantMap& changed,
                                       const QStringList& withdrawn) {
  if (interface != kInterface) return;
  if (found_) Take(changed);
  // What is withdrawn has a value that was not told with it.
  if ((!found_ || !withdrawn.isEmpty()) && !asking_) Ask();
}

void DbusBridgePort::Take(const QVariantMap& items) {
  for (std::size_t i = 0; i < kBridgeItems.size(); ++i) {
    const auto at = items.find(kBridgeItems[i]);
    // Text and no other kind; a number of any length that no radio has is text all the same.
    if (at == items.end() || at->metaType().id() != QMetaType::QString) continue;
    if (Told) Told(static_cast<BridgeItem>(i), at->toString().left(kLongestText).simplified().toStdString());
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
