// Message boxes, status text and log on Qt.
// Never opens a box where it is called: it queues it, so a pass of the run cycle is always over first.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

#include "platform/Notifier.h"

namespace spectrino {

class QtNotifier final : public QObject, public Notifier {
  Q_OBJECT
 public:
  /// unattended: texts go to standard error and no box is opened.
  explicit QtNotifier(bool unattended) : unattended_(unattended) {}

  using Notifier::ShowMessage;
  void ShowMessage(std::string_view title, std::string_view text, Severity severity,
                   const Cure& cure) override;
  void ShowStatus(std::string_view text) override;
  void Log(LogArea area, std::string_view text) override;

  /// The window that boxes belong to.
  void SetWindow(QWidget* window) { window_ = window; }
  [[nodiscard]] bool Unattended() const { return unattended_; }
  /// Called when the button of a cure was pressed and the box is closed.
  std::function<void(const Cure&)> CureWanted;

 signals:
  void StatusChanged(const QString& text);

 private:
  void OpenBox(const QString& title, const QString& text, Severity severity, const Cure& cure);

  bool unattended_;
  QPointer<QWidget> window_;
};

}  // namespace spectrino
