#include "settings/ui/ColourEditor.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QPixmap>

#include "settings/Keys.h"

namespace spectrino::setup {
namespace {
constexpr int kColumns = 5;
constexpr int kSwatch = 14;
constexpr int kPreviewRows = 5;
}  // namespace

ColourEditor::ColourEditor(QGroupBox* frame, QCheckBox* fill, QCheckBox* subDivision)
    : QObject(frame), chkFill_(fill), chkSubD_(subDivision) {
  MakeButtons(frame);
  picColor_ = new ColourPreview(frame);
  GridOf(frame)->addWidget(picColor_, 0, 2, kPreviewRows, 1, Qt::AlignTop);
  connect(chkFill_, &QAbstractButton::toggled, this, &ColourEditor::Show);
  connect(chkSubD_, &QAbstractButton::toggled, this, &ColourEditor::Show);
}

void ColourEditor::MakeButtons(QGroupBox* frame) {
  auto* buttons = new QGridLayout;
  for (std::size_t n = 0; n < kColourCount; ++n) {
    const QString caption = kColourRows[n].Caption;
    cmdColor_[n] = MakeButton(QString("cmdColor%1").arg(n), caption, tr("Color: %1").arg(caption), frame);
    connect(cmdColor_[n], &QPushButton::clicked, this, [this, n] { Edit(n); });
    const auto cell = static_cast<int>(n);
    buttons->addWidget(cmdColor_[n], cell / kColumns, cell % kColumns);
  }
  auto* cmdDefault = MakeButton("cmdDefault", tr("Defa&ult"), tr("Default colors (Spectrino)"), frame);
  cmdK4Color_ = MakeButton("cmdK4Color", tr("Default K&4"), tr("Default colors (K4)"), frame);
  connect(cmdDefault, &QPushButton::clicked, this, [this] { SetDefaults(kColoursSpectrino); });
  connect(cmdK4Color_, &QPushButton::clicked, this, [this] { SetDefaults(kColoursK4); });
  auto* defaults = new QHBoxLayout;
  defaults->addWidget(cmdDefault);
  defaults->addWidget(cmdK4Color_);
  defaults->addStretch(1);
  GridOf(frame)->addLayout(buttons, 0, 0, 1, 2);
  GridOf(frame)->addLayout(defaults, 1, 0, 1, 2);
}

SetupField ColourEditor::Field() {
  return {std::string(key::Colour(0).Name.Text()), [this](const SetupSection& setup) { Load(setup); },
          [this](SetupBatch& batch) { Put(batch); }};
}

void ColourEditor::Load(const SetupSection& setup) {
  for (std::size_t n = 0; n < kColourCount; ++n) {
    colours_[n] = static_cast<std::uint32_t>(setup.Read(key::Colour(n))) & 0xFFFFFF;
    if (setup.Has(key::Colour(n).Name)) stored_[n] = colours_[n];
  }
  Show();
}

void ColourEditor::Put(SetupBatch& batch) const {
  // A value wider than a colour reads as one; it stays as it was written unless another was chosen.
  for (std::size_t n = 0; n < kColourCount; ++n)
    if (stored_[n] != colours_[n]) batch.Put(key::Colour(n), static_cast<std::int32_t>(colours_[n]));
}

void ColourEditor::Edit(std::size_t n) {
  QColorDialog dialog(ToColour(colours_[n]), cmdColor_[n]->window());
  dialog.setObjectName("dlgcolor");
  // The desktop's own dialog may lack the window's dark look, and cannot be driven without a desktop.
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (dialog.exec() != QDialog::Accepted) return;
  colours_[n] = ToBgr(dialog.currentColor());
  Show();
}

void ColourEditor::SetDefaults(const ColourTable& colours) {
  chkSubD_->setChecked(false);
  chkFill_->setChecked(true);
  colours_ = colours;
  Show();
}

void ColourEditor::Show() {
  for (std::size_t n = 0; n < kColourCount; ++n) {
    const QColor colour = ToColour(colours_[n]);
    QPixmap swatch(kSwatch, kSwatch);
    swatch.fill(colour);
    cmdColor_[n]->setIcon(QIcon(swatch));
    cmdColor_[n]->setAccessibleDescription(colour.name());
  }
  const auto button = [this](ColourIndex index) { return cmdColor_[static_cast<std::size_t>(index)]; };
  button(ColourIndex::Fill)->setEnabled(chkFill_->isChecked());
  button(ColourIndex::SubDivision)->setEnabled(chkSubD_->isChecked());
  picColor_->Show(colours_, chkFill_->isChecked(), chkSubD_->isChecked());
}

}  // namespace spectrino::setup
