#include "sim/bridge/FlrigFollower.h"

#include <QNetworkReply>
#include <QXmlStreamReader>

namespace spectrino {
namespace {

constexpr int kPollMs = 200;
constexpr int kDeadlineMs = 2000;
constexpr qsizetype kLongestAnswer = 64 * 1024;

QByteArray CallText(const QString& method, const QString& params) {
  return ("<?xml version=\"1.0\"?><methodCall><methodName>" + method + "</methodName><params>" + params +
          "</params></methodCall>")
      .toUtf8();
}

// flrig's names of modes; those that it shares with Hamlib stay.
QString HamlibMode(const QString& mode) {
  if (mode == "CW-R") return "CWR";
  if (mode == "RTTY-R") return "RTTYR";
  if (mode == "USB-D" || mode == "DATA-U" || mode == "DIGU") return "PKTUSB";
  if (mode == "LSB-D" || mode == "DATA-L" || mode == "DIGL") return "PKTLSB";
  return mode;
}

std::optional<qint64> HertzIn(const QString& text) {
  bool isNumber = false;
  const qint64 hz = text.toLongLong(&isNumber);
  return isNumber && hz >= 0 ? std::optional(hz) : std::nullopt;
}

}  // namespace

QStringList XmlRpcValues(const QByteArray& answer) {
  QStringList values;
  QXmlStreamReader xml(answer);
  int depth = 0;  // of <value>, and what is inside one
  QString text;
  while (!xml.atEnd()) {
    switch (xml.readNext()) {
      case QXmlStreamReader::StartElement:
        if (xml.name() == QLatin1String("fault")) return {};
        if (xml.name() == QLatin1String("value")) ++depth;
        text.clear();
        break;
      case QXmlStreamReader::Characters:
        if (depth > 0) text += xml.text();
        break;
      case QXmlStreamReader::EndElement:
        if (xml.name() == QLatin1String("data")) text.clear();  // an array is its values
        if (xml.name() == QLatin1String("array")) text = QString();
        if (xml.name() == QLatin1String("value")) {
          --depth;
          if (!text.isNull()) values.push_back(text.trimmed());
          text = QString();
        }
        break;
      default:
        break;
    }
  }
  return xml.hasError() ? QStringList() : values;
}

FlrigFollower::FlrigFollower(const QString& host, quint16 port) {
  url_.setScheme("http");
  url_.setHost(host);
  url_.setPort(port);
  url_.setPath("/RPC2");
  poll_.setInterval(kPollMs);
  QObject::connect(&poll_, &QTimer::timeout, &poll_, [this] { Ask(); });
  poll_.start();
}

void FlrigFollower::Call(const QString& method, const QString& params,
                         std::function<void(const Answer&)> answered) {
  QNetworkRequest request(url_);
  request.setHeader(QNetworkRequest::ContentTypeHeader, "text/xml");
  request.setTransferTimeout(kDeadlineMs);
  QNetworkReply* reply = network_.post(request, CallText(method, params));
  ++waiting_;
  QObject::connect(reply, &QNetworkReply::finished, &poll_, [this, reply, answered = std::move(answered)] {
    --waiting_;
    reply->deleteLater();
    if (!answered) return;
    Answer answer{.Reached = reply->error() == QNetworkReply::NoError, .Value = {}};
    const QStringList values = answer.Reached ? XmlRpcValues(reply->read(kLongestAnswer)) : QStringList();
    if (!values.isEmpty()) answer.Value = values.front();
    answered(answer);
  });
}

void FlrigFollower::Ask() {
  if (waiting_ > 0) return;  // a slow radio is asked as fast as it answers
  Call("rig.get_vfoA", {}, [this](const Answer& answer) { TakeVfoA(answer); });
  AskFor("rig.get_vfoB", [this](const QString& hz) { radio_.VfoBHz = HertzIn(hz).value_or(radio_.VfoBHz); });
  AskFor("rig.get_mode", [this](const QString& mode) { radio_.Mode = HamlibMode(mode); });
  AskFor("rig.get_bw", [this](const QString& width) { radio_.BandwidthHz = width.toInt(); });
  AskFor("rig.get_split", [this](const QString& split) { radio_.Split = split.toInt() != 0; });
}

void FlrigFollower::AskFor(const QString& method, std::function<void(const QString&)> take) {
  Call(method, {}, [this, take = std::move(take)](const Answer& answer) {
    if (!answer.Value) return;
    take(*answer.Value);
    if (Told) Told(radio_);
  });
}

// The one value without which there is no radio.
void FlrigFollower::TakeVfoA(const Answer& answer) {
  const std::optional<qint64> hz = answer.Value ? HertzIn(*answer.Value) : std::nullopt;
  const QString name = "the flrig at " + url_.authority();
  radio_.Trouble.clear();
  if (!answer.Reached) radio_.Trouble = name + " does not answer: is it running, with its server on?";
  if (answer.Reached && !hz) radio_.Trouble = name + " tells no frequency: is its radio connected and on?";
  if (hz) radio_.VfoAHz = *hz;
  if (Told) Told(radio_);
}

void FlrigFollower::SetVfo(bool vfoB, qint64 hz) {
  Call(vfoB ? "rig.set_vfoB" : "rig.set_vfoA",
       QString("<param><value><double>%1</double></value></param>").arg(hz), {});
}

}  // namespace spectrino
