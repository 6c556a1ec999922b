#include "transfer/enrichment.h"

#include "base/code_page.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

constexpr int kTitle = 51;
constexpr int kNoKey = 30;
constexpr int kCardsCreated = 112;
constexpr int kFailed = 205;

// A directory that read itself would not come to an end: its own files are none.
std::string ForeignFile(const Directory& directory, const std::string& file) {
  return directory.paths().Holds(file) ? std::string() : file;
}

}  // namespace

EnrichmentForm::EnrichmentForm(Directory& directory, MessageForm& messages, EnrichmentMode mode,
                               const std::string& file, const std::string& prefix)
    : directory_(directory),
      messages_(messages),
      mode_(mode),
      reader_(directory.files(), ForeignFile(directory, file), prefix),
      failed_(!reader_.is_open()) {}

std::string EnrichmentForm::DirectoryText() const {
  return directory_.paths().Main();
}

bool EnrichmentForm::Next() {
  if (!reader_.ReadCaptureRecord(&card_)) return false;
  CharToOemBuff(card_.bytes());
  return true;
}

std::string EnrichmentForm::Company() const {
  return Utf8FromOem(card_.FieldText(kSte1));
}

void EnrichmentForm::Add() {
  AddCard(card_);
}

void EnrichmentForm::AddCard(const CardRecord& card) {
  directory_.context().current = card;
  uint32_t entry_position = 0;
  if (CardDispatch(directory_).Add(false, &entry_position) < 0) {
    failed_ = true;
  } else {
    ++added_;
  }
}

bool EnrichmentForm::AddEdited(CardRecord card) {
  StripKeyFields(card);
  if (!HasKeyField(card)) {
    messages_.ShowMessage(MessageStyle::kError, kTitle, kNoKey);
    return false;
  }
  AddCard(card);
  return true;
}

void EnrichmentForm::RunSilently(
    const std::function<bool(const std::string& company)>& show_and_ask_stop) {
  const int64_t before = directory_.own_count();
  const int32_t added_before = added_;
  {
    const Directory::Batch batch(directory_);
    failed_ = failed_ || !batch;
    bool stop = !batch;
    while (!stop && Next()) {
      stop = show_and_ask_stop(Company());
      Add();
    }
  }
  // A write that fails when the batch ends takes cards with it that were added before.
  added_ = added_before + static_cast<int32_t>(directory_.own_count() - before);
}

void EnrichmentForm::Finish() {
  directory_.CloseListView();
  if (directory_.write_failed()) failed_ = true;
  directory_.CloseDirectory();
  if (added_ > 0) {
    messages_.ShowMessage(MessageStyle::kInformation, kTitle, kCardsCreated, added_);
  } else if (failed_) {
    messages_.ShowMessage(MessageStyle::kError, kTitle, kFailed);
  }
}

}  // namespace carnetel
