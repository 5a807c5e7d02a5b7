#include "settings/ui/SetupFields.h"

#include <algorithm>
#include <string_view>

#include "state/Val.h"

namespace spectrino::setup {
namespace {

constexpr std::string_view kWrittenOrder[] = {
    "Device",    "IQ",        "Bits",   "Offset0",  "Center0", "AutoSpan0", "MP",       "OptSM",   "OptFreq",
    "Design",    "ccolor0",   "subd",   "Flip6",    "IQCW",    "IQUSB",     "Spik0",    "TypZoom", "Priority",
    "AutoREF",   "integr",    "qsy",    "Fill",     "SRate",   "APO",       "Global",   "24b",     "MHZ",
    "FlipFreq",  "FlipFreq2", "Mouse",  "Inverted", "Port",    "ICADDR",    "CTRLADDR", "ICCTRL",  "K4TCP",
    "K4CATPORT", "K4PANPORT", "SMCorr", "SMHold",   "QSplit0", "ICOM",      "Step0",    "BandMode"};

/// A text under a key, with the limit that it meets before it is saved, if any.
SetupField MakeField(QLineEdit* text, const KeyName& name, const std::string& defaultText, SetupLimit limit) {
  const auto load = [=](const SetupSection& setup) {
    text->setText(QString::fromStdString(setup.Read(TextKey{name, defaultText})));
  };
  const auto put = [=](SetupBatch& batch) {
    std::string typed = text->text().toStdString();
    if (limit != nullptr) {
      const double value = Val(typed);
      const double limited = limit(value);
      if (limited != value) typed = NumberText(limited);
    }
    batch.Put(TextKey{name, defaultText}, typed);
  };
  return {std::string(name.Text()), load, put};
}

}  // namespace

void SortAsWritten(SetupFields& fields) {
  const auto place = [](const SetupField& field) { return std::ranges::find(kWrittenOrder, field.Key); };
  std::ranges::stable_sort(fields, {}, place);
}

SetupField FlagField(QAbstractButton* button, const FlagKey& key) {
  return {std::string(key.Name.Text()),
          [=](const SetupSection& setup) { button->setChecked(setup.Read(key)); },
          [=](SetupBatch& batch) { batch.Put(key, button->isChecked()); }};
}

SetupField ListField(QComboBox* list, const IntKey& key, int first) {
  return {std::string(key.Name.Text()),
          [=](const SetupSection& setup) { list->setCurrentIndex(setup.Read(key) - first); },
          [=](SetupBatch& batch) { batch.Put(key, list->currentIndex() + first); }};
}

SetupField TextField(QLineEdit* text, const TextKey& key) {
  return MakeField(text, key.Name, std::string(key.Default), nullptr);
}

SetupField TextField(QLineEdit* text, const IntKey& key) {
  return LimitedField(text, key, nullptr);
}

SetupField TextField(QLineEdit* text, const NumberKey& key) {
  return LimitedField(text, key, nullptr);
}

template <typename Key>
SetupField LimitedField(QLineEdit* text, const Key& key, SetupLimit limit) {
  return MakeField(text, key.Name, DefaultText(key), limit);
}
template SetupField LimitedField(QLineEdit* text, const IntKey& key, SetupLimit limit);
template SetupField LimitedField(QLineEdit* text, const NumberKey& key, SetupLimit limit);

std::string DefaultText(const IntKey& key) {
  return std::to_string(key.Default);
}

std::string DefaultText(const NumberKey& key) {
  std::string text = NumberText(key.Default);
  if (key.Decimals > 0 && text.find('.') == std::string::npos)
    text += '.' + std::string(static_cast<std::size_t>(key.Decimals), '0');
  return text;
}

}  // namespace spectrino::setup
