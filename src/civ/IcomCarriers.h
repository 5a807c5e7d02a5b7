// The carrier of a run among those that there are: chosen when it opens, the same until the next one does.
#pragma once

#include "civ/CivState.h"
#include "civ/IcomCarrier.h"

namespace spectrino {

class IcomCarriers final : public IcomCarrier, public CivSender {
 public:
  /// All outlive it. host: null where nothing leads to a host program.
  IcomCarriers(CivState& state, IcomCarrier& serial, IcomCarrier* host)
      : state_(state), serial_(serial), host_(host) {}

  /// By CivState::IcomControl.
  [[nodiscard]] bool Open() override {
    // The one before still speaks into the same state.
    now_->FinishClosing();
    now_ = state_.IcomControl != 0 && host_ != nullptr ? host_ : &serial_;
    return now_->Open();
  }
  void Close() override { now_->Close(); }
  [[nodiscard]] bool Closing() const override { return now_->Closing(); }
  void FinishClosing() override { now_->FinishClosing(); }
  void Pump() override { now_->Pump(); }
  [[nodiscard]] CivSender& Sender() override { return *this; }
  [[nodiscard]] LinkHealth Health() const override { return now_->Health(); }
  [[nodiscard]] bool Answers() const override { return now_->Answers(); }
  [[nodiscard]] bool LinesDue() const override { return now_->LinesDue(); }
  [[nodiscard]] int SetUps() const override { return now_->SetUps(); }
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const override {
    return now_->LineArrived();
  }
  void BeforeLayout() override { now_->BeforeLayout(); }
  void AfterLayout(bool hidden) override { now_->AfterLayout(hidden); }

  void SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) override {
    now_->Sender().SendCiv(command, subCommand, data);
  }
  void SendFrequency(std::string_view bcd) override { now_->Sender().SendFrequency(bcd); }
  void ReceiveCiv() override { now_->Sender().ReceiveCiv(); }
  void RequestIcomStatus() override { now_->Sender().RequestIcomStatus(); }

 private:
  CivState& state_;
  IcomCarrier& serial_;
  IcomCarrier* host_;
  IcomCarrier* now_ = &serial_;
};

}  // namespace spectrino
