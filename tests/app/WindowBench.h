// The real window on settings of its own, driven as a person would.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/Program.h"
#include "app/Theme.h"

namespace spectrino {

class Window : public testing::Test {
 protected:
  Window() {
    ApplyTheme(*qApp);
    qputenv("XDG_CONFIG_HOME", folder_.path().toLocal8Bit());
    Reload();
  }
  ~Window() override { program_->Window().close(); }

  // A second program with the settings that the first one left.
  void Reload(const QStringList& arguments = {"spectrino"}) {
    if (program_) program_->Window().close();
    program_.reset();
    QString error;
    program_ = std::make_unique<Program>(*ParseCommandLine(arguments, error));
    program_->Window().LoadWindow();
    program_->Window().show();
  }
  template <typename Widget = QPushButton>
  Widget* Find(const char* name) {
    auto* widget = program_->Window().findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
  [[nodiscard]] std::uint64_t Lines() { return program_->Times().Lines; }
  [[nodiscard]] bool LinesCome(std::uint64_t count) {
    const std::uint64_t goal = Lines() + count;
    return QTest::qWaitFor([&] { return Lines() >= goal; }, 10000);
  }
  [[nodiscard]] QByteArray SettingsText() {
    EXPECT_EQ(program_->FinishSaving(), "");
    QFile file(folder_.filePath("spectrino/Spectrino.ini"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
  std::unique_ptr<Program> program_;
};

}  // namespace spectrino
