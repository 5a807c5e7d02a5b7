#include "catserver/RigctldFace.h"

#include <utility>

namespace spectrino {

bool RigctldFace::Feed(std::span<const std::uint8_t> bytes) {
  received_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return GoOn();
}

bool RigctldFace::Tick() {
  if (pending_) {
    const CatResult result = radio_.Look(pending_->Wish);
    if (result == CatResult::Waiting) return true;
    ways_.Send(pending_->Head + "RPRT " + std::to_string(static_cast<int>(result)) + '\n');
    pending_.reset();
  }
  return GoOn();
}

// Answers come in the order of the requests, so nothing overtakes a wish.
bool RigctldFace::GoOn() {
  std::size_t from = 0;
  while (!pending_ && !left_) {
    if (!line_.empty()) {
      TakeLine();
      continue;
    }
    const std::size_t end = received_.find('\n', from);
    if (end == std::string::npos || end - from > kMostLine) break;
    line_ = received_.substr(from, end - from);
    if (line_.ends_with('\r')) line_.pop_back();
    from = end + 1;
  }
  received_.erase(0, from);
  if (left_) return false;
  return pending_ ? received_.size() <= kMostWaiting : received_.size() <= kMostLine;
}

void RigctldFace::TakeLine() {
  // The request's texts are views into the line.
  const std::string line = std::exchange(line_, {});
  std::string_view left = line;
  while (!pending_ && !left_) {
    const std::optional<CatRequest> request = TakeRequest(left, session_.VfoMode);
    if (!request) return;
    Answer(*request);
  }
  line_ = left;
}

void RigctldFace::Answer(const CatRequest& request) {
  CatAnswer answer = AnswerTo(request, radio_, session_);
  left_ = request.Verb == CatVerb::Quit;
  if (answer.Wish) {
    CatPending asked;
    answer.Result = radio_.Ask(*answer.Wish, asked);
    const bool waits = answer.Result == CatResult::Waiting;
    if (waits) {
      std::string head = Rendered(request, answer);
      head.erase(head.rfind("RPRT "));
      pending_ = Pending{asked, std::move(head)};
    }
    ways_.Told(*answer.Wish, answer.Result);
    if (waits) return;
  }
  ways_.Send(Rendered(request, answer));
}

}  // namespace spectrino
