#include "settings/ui/frmFirstSteps.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/Controls.h"
#include "settings/Keys.h"
#include "settings/SerialAlias.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino {

using namespace setup;

namespace {

constexpr int kLevelsMs = 100;
constexpr int kAddressLength = 2;

bool IsK4(SourceKind kind) {
  return kind == SourceKind::K4 || kind == SourceKind::K4D;
}

QHBoxLayout* RowIn(QWidget* widget) {
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(0, 0, 0, 0);
  return row;
}

}  // namespace

frmFirstSteps::frmFirstSteps(FirstStepsWorld world, QWidget* parent)
    : QDialog(parent), world_(std::move(world)), setup_(world_.Store), choices_(new QButtonGroup(this)) {
  setObjectName("frmFirstSteps");
  setWindowTitle(tr("First steps"));
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(new QLabel(tr("What shall be shown? It can be changed at any time."), this));
  auto* page = new QWidget;
  auto* grid = new QGridLayout(page);
  grid->setColumnStretch(1, 1);
  MakeRows(*grid);
  grid->setRowStretch(grid->rowCount(), 1);
  auto* area = new QScrollArea(this);
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  rows->addWidget(area, 1);
  lblMissing_ = new QLabel(this);
  lblMissing_->setObjectName("lblMissing");
  lblMissing_->setWordWrap(true);
  lblMissing_->hide();
  rows->addWidget(lblMissing_);
  rows->addLayout(MakeButtons());
  resize(620, 340);
  connect(&levels_, &QTimer::timeout, this, &frmFirstSteps::ShowLevels);
  if (world_.Levels) levels_.start(kLevelsMs);
}

// The demo band stands first: it needs nothing.
void frmFirstSteps::MakeRows(QGridLayout& grid) {
  std::vector<std::pair<int, ChosenSource>> sources;
  for (int i = 0; const auto source = world_.Sources.At(i); ++i) sources.emplace_back(i, *source);
  std::ranges::stable_partition(sources,
                                [](const auto& source) { return source.second.Id.Kind == SourceKind::Demo; });
  for (const auto& [index, source] : sources) {
    const bool demo = source.Id.Kind == SourceKind::Demo;
    const QString caption = demo ? tr("&Try it with the demo band") : QString::fromStdString(source.Name);
    // A name may hold "&", which is no mnemonic.
    const QString shown = demo ? caption : QString(caption).replace("&", "&&");
    auto* choice = MakeOption(QString("optSource%1").arg(index), shown, {}, grid.parentWidget());
    choice->setAccessibleName(demo ? tr("Try it with the demo band") : caption);
    choices_->addButton(choice, index);
    choice->setChecked(index == world_.Current);
    const int row = grid.rowCount();
    grid.addWidget(choice, row, 0, Qt::AlignTop);
    if (QWidget* reach = MakeReach(source)) grid.addWidget(reach, row, 1);
  }
  if (choices_->checkedButton() == nullptr && !choices_->buttons().isEmpty())
    choices_->buttons().front()->setChecked(true);
  if (QAbstractButton* checked = choices_->checkedButton()) checked->setFocus();
}

QWidget* frmFirstSteps::MakeReach(const ChosenSource& source) {
  switch (source.Id.Kind) {
    case SourceKind::Icom:
      return MakeIcom();
    case SourceKind::K4:
      return MakeK4();
    case SourceKind::K4D:
      return new QLabel(tr("both receivers, at the K4's address"), this);
    case SourceKind::SoundInput: {
      auto* row = new InputRow(QString::fromStdString(source.Name), this);
      inputs_[source.Id.DeviceId] = row;
      return row;
    }
    default:
      return nullptr;
  }
}

QWidget* frmFirstSteps::MakeIcom() {
  auto* reach = new QWidget(this);
  ports_ = world_.Ports != nullptr ? world_.Ports->List() : std::vector<SerialPortEntry>{};
  QStringList labels;
  for (const SerialPortEntry& entry : ports_) labels.append(QString::fromStdString(entry.Label));
  const bool none = labels.isEmpty();
  cboPort_ = MakeList("cboStepsPort", none ? QStringList{tr("no serial port found")} : labels,
                      tr("The radio's serial port"), reach);
  cboPort_->setEnabled(!none);
  cboPort_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cboPort_->setMinimumContentsLength(18);
  if (world_.Ports != nullptr) {
    const std::string path = SerialPath(world_.Store, setup_.Read(key::kPort));
    const auto same = [&](const SerialPortEntry& entry) {
      return world_.Ports->SameDevice(entry.Path, path);
    };
    const auto at = std::ranges::find_if(ports_, same);
    if (at != ports_.end()) cboPort_->setCurrentIndex(static_cast<int>(at - ports_.begin()));
  }
  txtICAddr_ = MakeText("txtStepsICAddr", tr("IC Address"), 4, reach);
  txtICAddr_->setPlaceholderText("94");
  txtICAddr_->setText(QString::fromStdString(setup_.Read(key::kIcAddress)));
  auto* row = RowIn(reach);
  row->addWidget(cboPort_, 1);
  row->addWidget(new QLabel(tr("CI-V"), reach));
  row->addWidget(txtICAddr_);
  return reach;
}

QWidget* frmFirstSteps::MakeK4() {
  auto* reach = new QWidget(this);
  txtK4_ = MakeText("txtStepsK4", tr("K4 IP Address"), 16, reach);
  txtK4_->setPlaceholderText(tr("name or IP address"));
  txtK4_->setText(QString::fromStdString(setup_.Read(key::kK4Address)));
  RowIn(reach)->addWidget(txtK4_, 1);
  return reach;
}

QLayout* frmFirstSteps::MakeButtons() {
  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QString& toolTip) {
    QPushButton* button = setup::MakeButton(name, caption, toolTip, this);
    buttons->addWidget(button);
    return button;
  };
  QPushButton* more = add("cmdStepsSetup", tr("S&etup..."), tr("Everything else that can be set"));
  connect(more, &QPushButton::clicked, this, [this] {
    reject();
    emit SetupWanted();
  });
  buttons->addStretch(1);
  connect(add("cmdStepsLater", tr("&Later"), tr("Close without starting")), &QPushButton::clicked, this,
          &QDialog::reject);
  QPushButton* start = add("cmdStepsStart", tr("&Start"), tr("Start with the chosen source"));
  start->setDefault(true);
  connect(start, &QPushButton::clicked, this, &frmFirstSteps::cmdStart_Click);
  return buttons;
}

void frmFirstSteps::ShowLevels() {
  for (const auto& [id, level] : world_.Levels())
    if (const auto row = inputs_.find(id); row != inputs_.end()) row->second->Show(level);
}

std::pair<QString, QWidget*> frmFirstSteps::Missing(SourceKind kind) const {
  if (IsK4(kind) && txtK4_->text().trimmed().isEmpty()) return {tr("Enter the K4's address."), txtK4_};
  if (kind != SourceKind::Icom) return {};
  if (ports_.empty()) return {tr("Plug the radio's serial port in, then open this page again."), cboPort_};
  if (txtICAddr_->text().trimmed().size() != kAddressLength)
    return {tr("Enter the radio's CI-V address, for example 94."), txtICAddr_};
  return {};
}

void frmFirstSteps::cmdStart_Click() {
  const int index = choices_->checkedId();
  const auto source = world_.Sources.At(index);
  if (!source) return;
  const auto [text, where] = Missing(source->Id.Kind);
  if (where != nullptr) {
    lblMissing_->setText(text);
    lblMissing_->show();
    where->setFocus();
    return;
  }
  Save(source->Id.Kind);
  accept();
  emit StartWanted(index);
}

void frmFirstSteps::Save(SourceKind kind) {
  SetupBatch batch(setup_);
  if (IsK4(kind)) batch.Put(key::kK4Address, txtK4_->text().trimmed().toStdString()).Save();
  if (kind != SourceKind::Icom) return;
  batch.Put(key::kIcAddress, txtICAddr_->text().trimmed().toStdString()).Save();
  SaveSerialAlias(world_.Store, setup_.Read(key::kPort),
                  ports_[static_cast<std::size_t>(std::max(cboPort_->currentIndex(), 0))].Path);
}

}  // namespace spectrino
