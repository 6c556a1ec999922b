#include "platform/interrupt.h"

#include <atomic>

namespace carnetel {
namespace {

// A signal handler gets nothing but the signal's number, so this cannot be a member. A count, not a
// flag: a flag that lives within another one does not take the other's signal away.
std::atomic<unsigned> interrupt_count = 0;
static_assert(std::atomic<unsigned>::is_always_lock_free, "a handler may not wait for a lock");

extern "C" void CountInterrupt(int) {
  interrupt_count.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace

InterruptFlag::InterruptFlag() : count_at_start_(interrupt_count.load()) {
  struct sigaction action = {};
  action.sa_handler = CountInterrupt;
  ::sigemptyset(&action.sa_mask);
  // Without SA_RESTART a program that waits for input goes on and can ask requested().
  ::sigaction(SIGINT, &action, &former_);
}

InterruptFlag::~InterruptFlag() {
  ::sigaction(SIGINT, &former_, nullptr);
}

bool InterruptFlag::requested() const {
  return interrupt_count.load(std::memory_order_relaxed) != count_at_start_;
}

}  // namespace carnetel
