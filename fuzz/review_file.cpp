// Linear data files as GraphBP opens them.
#include "Target.h"
#include "review/ButtonPushes.h"

namespace bexlow::fuzz {

void Try(std::string_view text) {
  const auto check = review::CheckReviewFile(text);
  Require((check == review::ReviewCheck::Empty) == text.empty(), "an empty file is told");
  if (check != review::ReviewCheck::Ok) return;
  review::ReviewSeries review;
  bool whole = false;
  const bool taken = Takes([&] { whole = review::ReadReview(text, review); });
  Require(whole == taken, "a checked file has a whole header");
  Require(!review.ButtonPushes.empty(), "there is a push to show");
  Require(review.XLinear.size() == review.YLinear.size(), "X and Y are equally long");
  if (!taken) return Require(review.XLinear.empty(), "a failure leaves the series empty");
  for (const double push : review.ButtonPushes) {
    Require(push == 0 || push < static_cast<double>(review.XLinear.size()), "pushes stand on the run");
  }
  std::size_t last = 0, steps = 1;
  while (const auto next = review::StepForward(last, review.ButtonPushes.size())) {
    Require(review::StepBack(*next) == last, "a step back is a step forward undone");
    last = *next;
    ++steps;
  }
  Require(steps == review.ButtonPushes.size(), "every push is reached");
}

}  // namespace bexlow::fuzz
