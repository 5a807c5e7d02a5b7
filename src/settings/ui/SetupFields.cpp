#include "settings/ui/SetupFields.h"

#include <utility>

#include "state/Val.h"

namespace spectrino::setup {

SetupField FlagField(QAbstractButton* button, const FlagKey& key) {
  return {[=](const SetupSection& setup) { button->setChecked(setup.Read(key)); },
          [=](SetupBatch& batch) { batch.Put(key, button->isChecked()); }};
}

SetupField ListField(QComboBox* list, const IntKey& key, int first) {
  return {[=](const SetupSection& setup) { list->setCurrentIndex(setup.Read(key) - first); },
          [=](SetupBatch& batch) { batch.Put(key, list->currentIndex() + first); }};
}

SetupField TextField(QLineEdit* text, const KeyName& key, const std::string& defaultText) {
  return LimitedField(text, key, defaultText, nullptr);
}

SetupField LimitedField(QLineEdit* text, const KeyName& key, const std::string& defaultText,
                        std::function<double(double)> limit) {
  const auto load = [=](const SetupSection& setup) {
    text->setText(QString::fromStdString(setup.Read(TextKey{key, defaultText})));
  };
  const auto put = [=, limit = std::move(limit)](SetupBatch& batch) {
    std::string typed = text->text().toStdString();
    if (limit) {
      const double value = Val(typed);
      const double limited = limit(value);
      if (limited != value) typed = NumberText(limited);
    }
    batch.Put(TextKey{key, defaultText}, typed);
  };
  return {load, put};
}

}  // namespace spectrino::setup
