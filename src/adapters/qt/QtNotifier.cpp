#include "adapters/qt/QtNotifier.h"

#include <QLoggingCategory>
#include <QMessageBox>
#include <QPushButton>
#include <cstdio>

namespace spectrino {
namespace {

Q_LOGGING_CATEGORY(audioLog, "spectrino.audio", QtInfoMsg)
Q_LOGGING_CATEGORY(dspLog, "spectrino.dsp", QtInfoMsg)
Q_LOGGING_CATEGORY(k4Log, "spectrino.k4", QtInfoMsg)
Q_LOGGING_CATEGORY(civLog, "spectrino.civ", QtInfoMsg)
Q_LOGGING_CATEGORY(hostLog, "spectrino.host", QtInfoMsg)
Q_LOGGING_CATEGORY(settingsLog, "spectrino.settings", QtInfoMsg)
Q_LOGGING_CATEGORY(uiLog, "spectrino.ui", QtInfoMsg)

const QLoggingCategory& CategoryOf(LogArea area) {
  switch (area) {
    case LogArea::Audio:
      return audioLog();
    case LogArea::Dsp:
      return dspLog();
    case LogArea::K4:
      return k4Log();
    case LogArea::Civ:
      return civLog();
    case LogArea::Host:
      return hostLog();
    case LogArea::Settings:
      return settingsLog();
    case LogArea::Ui:
      return uiLog();
  }
  return uiLog();
}

QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QMessageBox::Icon IconOf(Severity severity) {
  switch (severity) {
    case Severity::Information:
      return QMessageBox::Information;
    case Severity::Exclamation:
      return QMessageBox::Warning;
    case Severity::Critical:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

void QtNotifier::ShowMessage(std::string_view title, std::string_view text, Severity severity,
                             const Cure& cure) {
  if (unattended_) {
    std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(title.size()), title.data(),
                 static_cast<int>(text.size()), text.data());
    if (!cure.Text.empty()) std::fprintf(stderr, "%s\n", cure.Text.c_str());
    return;
  }
  QMetaObject::invokeMethod(
      this,
      [this, boxTitle = FromUtf8(title), boxText = FromUtf8(text), severity, cure] {
        OpenBox(boxTitle, boxText, severity, cure);
      },
      Qt::QueuedConnection);
}

void QtNotifier::OpenBox(const QString& title, const QString& text, Severity severity, const Cure& cure) {
  auto* box = new QMessageBox(IconOf(severity), title, QString(text).remove('\r'), QMessageBox::Ok, window_);
  box->setTextFormat(Qt::PlainText);
  box->setInformativeText(QString::fromStdString(cure.Text));
  box->setAttribute(Qt::WA_DeleteOnClose);
  if (cure.Does != Remedy::None) {
    box->setEscapeButton(QMessageBox::Ok);
    QPushButton* button = box->addButton(QString::fromStdString(cure.Button), QMessageBox::ActionRole);
    button->setObjectName("cmdCure");
    box->setDefaultButton(button);
    connect(box, &QMessageBox::finished, this, [this, box, button, cure] {
      if (box->clickedButton() == button && CureWanted) CureWanted(cure);
    });
  }
  box->open();
}

void QtNotifier::ShowStatus(std::string_view text) {
  emit StatusChanged(FromUtf8(text));
}

void QtNotifier::Log(LogArea area, std::string_view text) {
  qCInfo(CategoryOf(area)).noquote() << FromUtf8(text);
}

}  // namespace spectrino
