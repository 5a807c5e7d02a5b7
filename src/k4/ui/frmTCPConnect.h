// The question after a connection to the K4 that did not come about.
// Shows texts and returns texts; what they mean is settled by the session.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <array>
#include <functional>

#include "k4/K4Retry.h"

namespace spectrino {

class frmTCPConnect final : public QDialog {
  Q_OBJECT
 public:
  frmTCPConnect(const QString& message, const K4ConnectTexts& shown, QWidget* parent = nullptr);
  [[nodiscard]] K4ConnectTexts Texts() const;

 private:
  std::array<QLineEdit*, 4> txtIP_{};
};

/// Asks with the dialog over the window that parent() names.
class K4RetryWindow final : public K4RetryDialog {
 public:
  /// unattended: nobody is there to answer, which is an answer.
  K4RetryWindow(std::function<QWidget*()> parent, bool unattended)
      : parent_(std::move(parent)), unattended_(unattended) {}
  [[nodiscard]] std::optional<K4ConnectTexts> Ask(const std::string& message,
                                                  const K4ConnectTexts& shown) override;

 private:
  std::function<QWidget*()> parent_;
  bool unattended_;
};

}  // namespace spectrino
