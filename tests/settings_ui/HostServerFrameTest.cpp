// The frame of the CAT server that the program runs itself: what is offered where, and what a search takes.
#include "settings/ui/HostServerFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino::setup {
namespace {

using testing::HasSubstr;
using Kind = FoundServer::Kind;

constexpr const char* kList =
    " Rig #  Mfg       Model      Version\n"
    "     1  Hamlib    Dummy      1.0\n"
    "   373  Icom      IC-7300    1.0\n"
    "   378  Icom      IC-7610    1.0\n"
    "  2047  Elecraft  K4         1.0\n";

class ServerFrame : public testing::Test {
 protected:
  ServerFrame() {
    file_.Files["Spectrino"] = "[Setup]\nRigModel=1\n";
    frame_.AddFields(fields_);
    for (const SetupField& field : fields_) field.Load(setup_);
    page_.show();
  }
  void Look(const FoundServer& found) {
    frame_.Show(true, "here");
    answer_(found);
  }
  void Search(const char* text) {
    model_->setFocus();
    model_->lineEdit()->selectAll();
    QTest::keyClicks(model_->lineEdit(), text);
  }
  /// What OK would store; "kept open: ..." where it would not.
  [[nodiscard]] std::string Stored() {
    if (const QString problem = frame_.Problem(); !problem.isEmpty())
      return "kept open: " + problem.toStdString();
    SetupBatch batch(setup_);
    for (const SetupField& field : fields_) field.Put(batch);
    batch.Save();
    return store_.GetSetting("Spectrino", "Setup", "RigModel", "");
  }

  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  SetupSection setup_{store_};
  QWidget page_;
  std::function<void(const FoundServer&)> answer_;
  HostServerFrame frame_{nullptr, [](const auto& answered) { answered(kList); },
                         [this](const std::string&, QObject*, auto answered) { answer_ = answered; }, &page_};
  SetupFields fields_;
  QComboBox* model_ = page_.findChild<QComboBox*>("cboRigModel");
};

TEST_F(ServerFrame, SaysWhatAnswersAndOffersNothingElsewhere) {
  for (const auto& [what, says] :
       {std::pair{Kind::Nobody, "Nothing answers at 127.0.0.1:4532."},
        {Kind::Ours, "Spectrino runs the rigctld at 127.0.0.1:4532."},
        {Kind::Elsewhere, ""},
        {Kind::CatServer, "A rigctld already answers at 127.0.0.1:4532: it will be used."},
        {Kind::Another, "does not answer as a rigctld does"}}) {
    Look({what, "127.0.0.1:4532"});
    EXPECT_EQ(frame_.fraHostServer->isVisible(), what != Kind::Elsewhere);
    if (what == Kind::Elsewhere) continue;
    EXPECT_THAT(page_.findChild<QLabel*>("lblHostServer")->text().toStdString(), HasSubstr(says));
  }
  const auto late = answer_;
  frame_.Show(false, "here");
  late({Kind::Nobody, "127.0.0.1:4532"});
  EXPECT_FALSE(frame_.fraHostServer->isVisible()) << "an answer to what is asked no more";
}

TEST_F(ServerFrame, ASearchTakesTheSingleMatchAndKeepsNoOtherSilently) {
  Look({Kind::Nobody, "127.0.0.1:4532"});
  const struct {
    const char *Typed, *Stored;
  } rows[] = {{"7300", "373"},
              {"k4", "2047"},
              {"elecraft K4", "2047"},
              {"IC-7", "kept open: 2 radios are called \"IC-7\": choose one from the list."},
              {"FT-8", "kept open: No radio that rigctld knows is called \"FT-8\"."},
              {"dummy", "1"}};
  for (const auto& row : rows) {
    Search(row.Typed);
    EXPECT_EQ(Stored(), row.Stored) << row.Typed;
  }
  Search("7610");
  QTest::keyClick(
      QApplication::activePopupWidget() != nullptr ? QApplication::activePopupWidget() : model_->lineEdit(),
      Qt::Key_Return);
  EXPECT_EQ(model_->currentText(), "Icom IC-7610") << "Enter takes it";
  Search("FT-8");
  QTest::keyClick(model_->lineEdit(), Qt::Key_Return);
  EXPECT_THAT(page_.findChild<QLabel*>("lblHostServer")->text().toStdString(), HasSubstr("FT-8"));
}

}  // namespace
}  // namespace spectrino::setup
