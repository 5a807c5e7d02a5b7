#include "macros/ui/MacroPanel.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QStyleOptionButton>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kMostCaption = 100;  ///< what a tool tip still shows

QKeySequence EditKey() {
  return Qt::SHIFT | Qt::Key_F10;
}

/// One line of what the user typed: a line break would make the button higher than its row.
QString OneLine(const std::string& caption) {
  return QString::fromStdString(caption).left(kMostCaption).simplified();
}

/// What of a caption the button has room for. A pressed one is bold, and so every one is measured.
QString Fitting(const QString& caption, const QPushButton& button) {
  QStyleOptionButton option;
  option.initFrom(&button);
  const int width = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).width();
  QFont bold = button.font();
  bold.setBold(true);
  return QFontMetrics(bold).elidedText(caption, Qt::ElideRight, width);
}

}  // namespace

MacroPanel::MacroPanel(QWidget* parent) : QWidget(parent) {
  setObjectName("MacroPanel");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(3);
  for (int n = 0; n < kMacroCount; ++n) {
    Place& place = places_[static_cast<std::size_t>(n)];
    place.cmdMacro = AddButton(QString("cmdMacro%1").arg(n), n);
    connect(place.cmdMacro, &QPushButton::clicked, this, [this, n] { emit cmdMacro_Click(n); });
    place.chkMacro = AddButton(QString("chkMacro%1").arg(n), n);
    place.chkMacro->setCheckable(true);
    connect(place.chkMacro, &QPushButton::clicked, this, [this, n](bool on) { emit chkMacro_Click(n, on); });
    place.chkMacro->hide();
  }
}

QPushButton* MacroPanel::AddButton(const QString& name, int n) {
  QPushButton* button = MakeButton(name, {}, {}, this);
  button->setMinimumWidth(kNarrowest);
  // All alike, however long a caption is.
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  button->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(button, &QPushButton::customContextMenuRequested, this, [this, n] { emit EditMacro(n); });
  auto* menuKey = new QShortcut(EditKey(), button);
  menuKey->setContext(Qt::WidgetShortcut);
  connect(menuKey, &QShortcut::activated, this, [this, n] { emit EditMacro(n); });
  layout()->addWidget(button);
  return button;
}

void MacroPanel::SetupMacroButtons(const MacroSet& macros) {
  for (int n = 0; n < kMacroCount; ++n) {
    Place& place = places_[static_cast<std::size_t>(n)];
    const Macro& macro = macros[static_cast<std::size_t>(n)];
    Macro renamed = place.shown;
    renamed.Caption = macro.Caption;
    if (renamed != macro) place.chkMacro->setChecked(false);
    place.shown = macro;
    QPushButton* gone = macro.OnOff ? place.cmdMacro : place.chkMacro;
    QPushButton* here = macro.OnOff ? place.chkMacro : place.cmdMacro;
    const bool focused = window()->focusWidget() == gone;
    here->show();
    if (focused) here->setFocus();
    gone->hide();
    ShowCaption(place, n);
  }
  ElideCaptions();
}

void MacroPanel::ShowCaption(Place& place, int n) {
  const QString caption = OneLine(place.shown.Caption);
  const QString hint = tr("A right click edits this macro (%1)").arg(EditKey().toString());
  for (QPushButton* button : {place.cmdMacro, place.chkMacro}) {
    // Rich text on purpose: what the user typed is shown, never taken for mark-up.
    button->setToolTip(QString("<p>%1<br>%2</p>").arg(caption.toHtmlEscaped(), hint.toHtmlEscaped()));
    button->setAccessibleName(tr("Macro %1: %2").arg(QString::number(n + 1), caption));
    button->setAccessibleDescription(hint);
  }
}

void MacroPanel::ElideCaptions() {
  // A button that has just been shown gets its place now, not with the next event.
  layout()->activate();
  for (const Place& place : places_) {
    const QString caption = OneLine(place.shown.Caption);
    QString text = Fitting(caption, place.shown.OnOff ? *place.chkMacro : *place.cmdMacro);
    text.replace('&', "&&");
    place.cmdMacro->setText(text);
    place.chkMacro->setText(text);
  }
}

void MacroPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ElideCaptions();
}

}  // namespace spectrino
