#include "bands/ui/BandModePanel.h"

#include <QVBoxLayout>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kReverseButton = 9;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QHBoxLayout* AddRow(QVBoxLayout* rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(3);
  rows->addLayout(row);
  return row;
}

}  // namespace

BandModePanel::BandModePanel(QWidget* parent) : QWidget(parent) {
  setObjectName("BandModePanel");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(6, 2, 6, 2);
  rows->setSpacing(3);
  bandRow_ = AddRow(rows);
  modeRow_ = AddRow(rows);
  for (int i = 0; i < kBandButtonCount; ++i) {
    auto* button = AddButton(QString("cmdBand%1").arg(i), bandRow_);
    connect(button, &QPushButton::clicked, this, [this, i] { emit cmdBand_Click(i); });
    cmdBand_[static_cast<std::size_t>(i)] = button;
  }
  for (int i = 0; i < kModeButtonCount; ++i) {
    auto* button = AddButton(QString("cmdMode%1").arg(i), modeRow_);
    connect(button, &QPushButton::clicked, this, [this, i] { emit cmdMode_Click(i); });
    cmdMode_[static_cast<std::size_t>(i)] = button;
  }
  Show(layout_);
}

QPushButton* BandModePanel::AddButton(const QString& name, QHBoxLayout* row) {
  QPushButton* button = MakeToggle(name, {}, {}, this);
  button->setMinimumWidth(kNarrowest);
  // Pressed is what the radio is on; a click only asks for it.
  connect(button, &QPushButton::clicked, button, [button](bool on) { button->setChecked(!on); });
  row->addWidget(button, kButtonStretch);
  return button;
}

void BandModePanel::Show(const DeckLayout& layout) {
  layout_ = layout;
  const BandButtonTexts& bands = BandTexts(layout.Bands);
  for (std::size_t i = 0; i < bands.size(); ++i) {
    cmdBand_[i]->setText(Text(bands[i].Caption));
    cmdBand_[i]->setToolTip(Text(bands[i].ToolTip));
    cmdBand_[i]->setAccessibleName(i == 0 ? tr("General coverage")
                                          : tr("Band %1").arg(Text(bands[i].Caption)));
  }
  const ModeButtonTexts& modes = ModeTexts(layout.Modes);
  for (std::size_t i = 0; i < modes.size(); ++i) {
    cmdMode_[i]->setText(Text(modes[i].Caption));
    cmdMode_[i]->setToolTip(Text(modes[i].ToolTip));
    cmdMode_[i]->setAccessibleName(tr("Mode %1").arg(Text(modes[i].ToolTip)));
    cmdMode_[i]->setVisible(!modes[i].Caption.empty());
  }
}

void BandModePanel::ShowCurrent(std::optional<int> bandButton, std::optional<int> modeButton, bool reverse) {
  for (int i = 0; i < kBandButtonCount; ++i)
    cmdBand_[static_cast<std::size_t>(i)]->setChecked(i == bandButton);
  for (int i = 0; i < kModeButtonCount; ++i)
    cmdMode_[static_cast<std::size_t>(i)]->setChecked(i == modeButton);
  if (layout_.Modes == ModeLayout::Designed) cmdMode_[kReverseButton]->setChecked(reverse);
}

void BandModePanel::AddToModeRow(QWidget* widget, int stretch) {
  modeRow_->addWidget(widget, stretch);
}

}  // namespace spectrino
