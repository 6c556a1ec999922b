// Runs a fuzz target without libFuzzer: on the files named on the command line, or on a number of
// inputs made from a fixed pseudo-random sequence.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr size_t kLongestInput = 400;

void RunMadeUp(unsigned long count) {
  uint64_t state = 0x2545F4914F6CDD1D;
  const auto next = [&state] {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state;
  };
  for (unsigned long i = 0; i < count; ++i) {
    std::vector<uint8_t> input(next() % kLongestInput);
    for (uint8_t& byte : input) byte = static_cast<uint8_t>(next());
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string first = argc > 1 ? argv[1] : "1000";
  const unsigned long count = std::strtoul(first.c_str(), nullptr, 10);
  if (count > 0) {
    RunMadeUp(count);
    std::cout << count << " inputs\n";
    return 0;
  }
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i], std::ios::binary);
    const std::vector<char> input{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }
  return 0;
}
