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
                         std::function<void(const QString&)> answered) {
  QNetworkRequest request(url_);
  request.setHeader(QNetworkRequest::ContentTypeHeader, "text/xml");
  request.setTransferTimeout(kDeadlineMs);
  QNetworkReply* reply = network_.post(request, CallText(method, params));
  ++waiting_;
  QObject::connect(reply, &QNetworkReply::finished, &poll_, [this, reply, answered = std::move(answered)] {
    --waiting_;
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) return;
    const QStringList values = XmlRpcValues(reply->read(kLongestAnswer));
    if (!values.isEmpty() && answered) answered(values.front());
  });
}

void FlrigFollower::Ask() {
  if (waiting_ > 0) return;  // a slow radio is asked as fast as it answers
  Call("rig.get_vfoA", {}, [this](const QString& hz) { radio_.VfoAHz = hz.toLongLong(); });
  Call("rig.get_vfoB", {}, [this](const QString& hz) { radio_.VfoBHz = hz.toLongLong(); });
  Call("rig.get_mode", {}, [this](const QString& mode) { radio_.Mode = HamlibMode(mode); });
  Call("rig.get_bw", {}, [this](const QString& width) { radio_.BandwidthHz = width.toInt(); });
  Call("rig.get_split", {}, [this](const QString& split) {
    radio_.Split = split.toInt() != 0;
    if (Told) Told(radio_);
  });
}

void FlrigFollower::SetVfo(bool vfoB, qint64 hz) {
  Call(vfoB ? "rig.set_vfoB" : "rig.set_vfoA",
       QString("<param><value><double>%1</double></value></param>").arg(hz), {});
}

}  // namespace spectrino
