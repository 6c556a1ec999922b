// Enriches the open directory from a capture file: silently, or record by record with the user's
// word, who may edit each card first. The three modes share the count of cards added and the
// message at the end.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/messages.h"
#include "storage/directory.h"
#include "transfer/capture.h"

namespace carnetel {

enum class EnrichmentMode { kSilent = 3, kReview = 4, kEdit = 5 };

class EnrichmentForm {
 public:
  // `directory` is open. `file` and `prefix` as the start of the program gave them.
  EnrichmentForm(Directory& directory, MessageForm& messages, EnrichmentMode mode,
                 const std::string& file, const std::string& prefix);

  [[nodiscard]] EnrichmentMode mode() const { return mode_; }
  // False: there is nothing to show, only the message of Finish.
  [[nodiscard]] bool can_run() const { return reader_.is_open(); }
  // The directory's main file, as the silent form shows it.
  [[nodiscard]] std::string DirectoryText() const;

  // Takes the next record; false at the end of the file.
  bool Next();
  // The record at hand: as a card (OEM), and its company (UTF-8).
  [[nodiscard]] const CardRecord& card() const { return card_; }
  [[nodiscard]] std::string Company() const;

  // Adds the record at hand, as it is. One that cannot be added does not count; there is no
  // message.
  void Add();
  // Adds what the user made of it, as the card form saves a new card; false, with a message, when
  // company and surname are both empty: the focus goes to the company.
  bool AddEdited(CardRecord card);

  // The silent run: shows each company (UTF-8) and adds the card, until the end. When the user
  // wants to stop, the card at hand is still added.
  void RunSilently(const std::function<bool(const std::string& company)>& show_and_ask_stop);

  [[nodiscard]] int32_t added() const { return added_; }
  // Whether there was no file to read, or a card could not be added or written.
  [[nodiscard]] bool failed() const { return failed_; }
  // Ends the run: closes the directory and tells how many cards were added, or, when there are
  // none, that it failed.
  void Finish();

 private:
  void AddCard(const CardRecord& card);

  Directory& directory_;
  MessageForm& messages_;
  EnrichmentMode mode_;
  CaptureReader reader_;
  CardRecord card_;
  int32_t added_ = 0;
  bool failed_ = false;
};

}  // namespace carnetel
