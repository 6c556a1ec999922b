// What the exports to a foreign file share: the walk over the marked cards, and a file to which
// cards are added in blocks. Only cards that reached the file count.
#pragma once

#include <functional>
#include <string>

#include "storage/directory.h"
#include "transfer/transfer.h"

namespace carnetel {

class CardWriter {
 public:
  // Writes behind what the file holds.
  explicit CardWriter(File& file) : file_(file), end_(file.Size()) {}

  // Where the bytes of the next card go.
  std::string& block() { return block_; }
  // A card is complete; false when a block could not be written.
  bool EndCard();
  bool Flush();

  [[nodiscard]] bool failed() const { return failed_; }
  [[nodiscard]] uint32_t written() const { return written_; }
  // End of what was written whole.
  [[nodiscard]] uint64_t end() const { return end_; }

 private:
  File& file_;
  uint64_t end_;
  std::string block_;
  uint32_t waiting_ = 0;
  uint32_t written_ = 0;
  bool failed_ = false;
};

// The outcome of an export that cannot go on: text `text_id` about `path`.
void FailExport(TransferOutcome* outcome, int text_id, const std::string& path);

using AppendCard = std::function<void(const CardRecord& card, std::string& block)>;

// Writes the cards marked in the displayed group, in the order of the list and at most as many as
// its counter tells, with progress. The outcome has what became of it.
void WriteMarkedCards(Directory& source, const std::string& destination, CardWriter& writer,
                      const AppendCard& append, TransferOutcome* outcome);

}  // namespace carnetel
