#include "cli/interruptible_input.h"

#include <unistd.h>

namespace carnetel {

InterruptibleInput::int_type InterruptibleInput::underflow() {
  if (ended_) return traits_type::eof();
  const ssize_t count = ::read(descriptor_, bytes_.data(), bytes_.size());
  ended_ = count <= 0;
  if (ended_) return traits_type::eof();
  setg(bytes_.data(), bytes_.data(), bytes_.data() + count);
  return traits_type::to_int_type(bytes_.front());
}

}  // namespace carnetel
