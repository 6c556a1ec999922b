#include "link/exchange_request.h"

#include "base/code_page.h"
#include "base/path.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

constexpr size_t kHeaderSize = 96;
constexpr size_t kRequestSize = 173;
constexpr size_t kReplyOffset = 288;
constexpr size_t kRequestRows = 5;
constexpr size_t kNameRows = 2;
constexpr size_t kFirstRow = 3;
constexpr size_t kRowSize = 34;
constexpr size_t kRowTextSize = 32;

constexpr size_t kRepliedCard = 30;

struct ReplyForm {
  size_t size;
  size_t surname;  // 0 for none
  size_t company;
  size_t company_size;
  size_t path;
};
constexpr ReplyForm kShortReply = {149, 0, 40, 48, 88};
constexpr ReplyForm kLongReply = {161, 34, 67, 33, 100};
constexpr size_t kReplyNumberSize = 30;
constexpr size_t kReplySurnameSize = 33;
constexpr size_t kReplyPathSize = 60;

constexpr uint64_t kSmallestFile = kHeaderSize + kRequestSize;
// No directory takes more cards than these.
constexpr uint64_t kLargestFile = kHeaderSize + uint64_t{kRequestSize} * kMaxCards;

constexpr int kTitle = 51;
constexpr int kCardsCreated = 112;
constexpr int kInsertionAccepted = 198;
constexpr int kInsertionRefused = 199;
constexpr int kCardExists = 203;

struct RequestRow {
  AnsiText text;
  uint8_t field = 0;
};
using Request = std::array<RequestRow, kRequestRows>;

Request LoadRequest(ByteView record) {
  Request request;
  for (size_t i = 0; i < kRequestRows; ++i) {
    const ByteView row = record.subspan(kFirstRow + kRowSize * i, kRowSize);
    request[i] = {AnsiText(CopyFieldText(row, kRowTextSize)), LoadU8(row, kRowTextSize)};
  }
  return request;
}

// A row without text may hold anything: its field is never looked at.
bool NamesFields(const Request& request) {
  return std::ranges::all_of(
      request, [](const RequestRow& row) { return row.text.empty() || row.field < kFieldCount; });
}

// The records of an exchange file as far as they are whole; none for a file that is no such one.
std::vector<std::byte> ReadRecords(ReadableFile& file) {
  const uint64_t size = file.Size();
  if (size < kSmallestFile || size > kLargestFile) return {};
  std::vector<std::byte> records(static_cast<size_t>(size) - kHeaderSize);
  const size_t read = file.Read(kHeaderSize, records);
  records.resize(read - read % kRequestSize);
  return records;
}

std::vector<Request> LoadRequests(ByteView records) {
  std::vector<Request> requests;
  for (size_t at = 0; at < records.size(); at += kRequestSize) {
    requests.push_back(LoadRequest(records.subspan(at, kRequestSize)));
  }
  return requests;
}

// The search of a look-up through the surnames, whatever index is active. One card with a number
// answers it; otherwise `nearest` is the card to begin a choice with: the second one of the name,
// or the first one behind it.
class NameSearch {
 public:
  NameSearch(Directory& directory, std::string name)
      : directory_(directory), name_(std::move(name)) {}

  void Run();

  [[nodiscard]] bool answered() const { return hits_ == 1; }
  [[nodiscard]] const CardRecord& card() const { return card_; }
  [[nodiscard]] uint32_t card_offset() const { return card_offset_; }
  [[nodiscard]] uint32_t nearest() const { return nearest_; }

 private:
  // False: the search is over.
  bool Take(const IndexSlot& slot);

  Directory& directory_;
  std::string name_;
  int hits_ = 0;
  CardRecord card_;
  uint32_t card_offset_ = 0;
  uint32_t nearest_ = 0;
};

void NameSearch::Run() {
  const KeyIndex& index = directory_.index(2);
  IndexKey key{};
  std::copy_n(name_.begin(), std::min(name_.size(), kKeySize), key.begin());
  SlotPlace place = index.LowerBound(key);
  for (; index.HasPage(place.page); place = {place.page + kIndexPageSize, 0}) {
    for (; place.slot < kSlotsPerPage; ++place.slot) {
      if (!Take(index.SlotAt(place.page, place.slot))) return;
    }
  }
}

bool NameSearch::Take(const IndexSlot& slot) {
  const int order = slot.used() ? CompareKey(KeyView(slot.key), name_, kKeySize) : -1;
  if (order < 0) return hits_ == 0;
  if (order > 0) {
    if (hits_ == 0) nearest_ = slot.card_offset;
    return false;
  }
  CardRecord card;
  const bool read = directory_.main().ReadCard(slot.card_offset, card);
  if (!read || card.FieldEmpty(kTel1)) return true;
  if (++hits_ == 2) {
    nearest_ = slot.card_offset;
    return false;
  }
  card_ = card;
  card_offset_ = slot.card_offset;
  return true;
}

AnsiText PathInReply(const Directory& directory) {
  const std::string path = directory.paths().Main();
  const std::string full = path.starts_with('/') ? path : directory.files().Canonical(path);
  return UpperCasePath(AnsiFromUtf8Lossy(full));
}

std::vector<std::byte> ComposeReply(const Directory& directory, const NameSearch& search,
                                    const ReplyForm& form) {
  std::vector<std::byte> reply(form.size);
  const auto store = [&](size_t at, size_t size, int field) {
    StorePadded(reply, at, size, OemToAnsi(search.card().FieldText(field)).bytes());
  };
  store(0, kReplyNumberSize, kTel1);
  StoreLe32(reply, kRepliedCard, search.card_offset());
  if (form.surname != 0) store(form.surname, kReplySurnameSize, kNom);
  store(form.company, form.company_size, kSte1);
  StorePadded(reply, form.path, kReplyPathSize, PathInReply(directory).bytes());
  return reply;
}

int LookUp(Directory& directory, File& file, const Request& request, bool long_records) {
  std::string name = AnsiToOem(request[0].text).bytes();
  UpperCaseRun(name, kRowTextSize);
  // An accented capital is none of these: such a name is left to the chooser.
  if (name.empty() || name[0] < '0' || name[0] > 'Z') return kExchangeNotServed;
  NameSearch search(directory, std::move(name));
  search.Run();
  if (!search.answered()) {
    if (search.nearest() != 0) directory.address().SelectRowOfCard(search.nearest());
    return kExchangeNotServed;
  }
  const ReplyForm& form = long_records ? kLongReply : kShortReply;
  if (!file.Write(kReplyOffset, ComposeReply(directory, search, form))) return kExchangeNotServed;
  directory.CloseDirectory();
  return kExchangeDone;
}

// The record stays as it is, and so does what lies behind the place of a reply.
int Rewrite(Directory& directory, File& file, ByteView record) {
  std::vector<std::byte> image(kReplyOffset);
  StorePadded(image, 0, kHeaderSize, kExchangeBanner);
  std::ranges::copy(record, image.begin() + kHeaderSize);
  if (!file.Write(0, image)) return kExchangeNotServed;
  directory.CloseDirectory();
  return kExchangeDone;
}

// Puts the requests of a file into the directory as cards, with the user's word where one is there
// already.
class InsertionRun {
 public:
  InsertionRun(Directory& directory, MessageForm& messages, std::vector<Request> requests)
      : directory_(directory), messages_(messages), requests_(std::move(requests)) {}

  // Closes the directory unless every card was left out.
  int Run(const std::string& file);

 private:
  enum class Outcome { kAdded, kLeftOut, kRefused };

  Outcome Insert(const Request& request);
  // The row by which a card is looked for: the active index's, or the other one where that is
  // empty.
  [[nodiscard]] const RequestRow& NameRow(const Request& request) const;
  bool AddCard(CardRecord card);
  void Tell(MessageStyle style, int text_id, const Request& request);
  int Close(int result);

  Directory& directory_;
  MessageForm& messages_;
  std::vector<Request> requests_;
};

int InsertionRun::Run(const std::string& file) {
  const bool alone = requests_.size() == 1;
  int32_t added = 0;
  bool any_refused = false;
  for (const Request& request : requests_) {
    if (NameRow(request).text.empty()) {
      Tell(MessageStyle::kError, kInsertionRefused, request);
      return Close(kExchangeRefused);
    }
    const Outcome outcome = Insert(request);
    if (outcome == Outcome::kAdded) ++added;
    if (outcome == Outcome::kRefused) any_refused = true;
    if (!alone || outcome == Outcome::kLeftOut) continue;
    const bool accepted = outcome == Outcome::kAdded;
    if (accepted) directory_.address().Flush();
    Tell(accepted ? MessageStyle::kInformation : MessageStyle::kError,
         accepted ? kInsertionAccepted : kInsertionRefused, request);
  }
  directory_.files().Remove(file);
  if (!alone) messages_.ShowMessage(MessageStyle::kInformation, kTitle, kCardsCreated, added);
  if (any_refused) return Close(kExchangeRefused);
  return added == 0 ? kExchangeNotServed : Close(kExchangeDone);
}

InsertionRun::Outcome InsertionRun::Insert(const Request& request) {
  CardRecord& card = directory_.context().current;
  card.Clear();
  const RequestRow& name = NameRow(request);
  card.SetField(name.field, AnsiToOem(name.text));
  uint32_t found = 0;
  if (CardDispatch(directory_).Find(WalkDirection::kFirst, &found) == 0) {
    const MessageButton answer = messages_.ShowMessage(MessageStyle::kYesNoCancel, kTitle,
                                                       kCardExists, Utf8FromAnsi(name.text));
    if (answer == MessageButton::kYes) card.Clear();
    if (answer != MessageButton::kYes && answer != MessageButton::kNo) return Outcome::kLeftOut;
  }
  for (size_t i = 0; i < kRequestRows; ++i) {
    const RequestRow& row = request[i];
    // Only the rows of the name can mean field 0, the company: in the others that is none.
    if (row.text.empty() || (i >= kNameRows && row.field == 0)) continue;
    card.SetField(row.field, AnsiToOem(row.text));
  }
  return AddCard(card) ? Outcome::kAdded : Outcome::kRefused;
}

const RequestRow& InsertionRun::NameRow(const Request& request) const {
  const size_t first = directory_.active_index_number() == 2 ? 0 : 1;
  return request[first].text.empty() ? request[1 - first] : request[first];
}

// A card that an index has no place for would have the next opening build the address file anew and
// drop the groups: it loses what no key can begin with, as in a form.
bool InsertionRun::AddCard(CardRecord card) {
  if (IndexKeyOf(card, kSte1)[0] == 0 || IndexKeyOf(card, kNom)[0] == 0) StripKeyFields(card);
  if (!HasKeyField(card)) return false;
  directory_.context().current = card;
  uint32_t entry_position = 0;
  return CardDispatch(directory_).Add(false, &entry_position) >= 0;
}

void InsertionRun::Tell(MessageStyle style, int text_id, const Request& request) {
  messages_.ShowMessage(style, kTitle, text_id, Utf8FromAnsi(NameRow(request).text),
                        directory_.paths().Main());
}

int InsertionRun::Close(int result) {
  directory_.CloseListView();
  const bool written = !directory_.write_failed();
  directory_.CloseDirectory();
  return written ? result : kExchangeRefused;
}

}  // namespace

int ServeExchangeRequest(Directory& directory, const ExchangeRequestJob& job,
                         MessageForm& messages) {
  if (directory.paths().Holds(job.file)) return kExchangeRefused;
  const bool inserts = job.type == ExchangeType::kInsert;
  const OpenMode mode = inserts ? OpenMode::kRead : OpenMode::kReadWrite;
  std::unique_ptr<File> file = directory.files().Open(job.file, mode);
  if (file == nullptr) return kExchangeRefused;
  const std::vector<std::byte> records = ReadRecords(*file);
  if (records.empty()) return inserts ? kExchangeRefused : kExchangeNotServed;
  const ByteView first = ByteView(records).first(kRequestSize);
  switch (job.type) {
    case ExchangeType::kLookUp:
      return LookUp(directory, *file, LoadRequest(first), job.long_records);
    case ExchangeType::kRewrite:
      return Rewrite(directory, *file, first);
    case ExchangeType::kInsert:
      break;
  }
  file.reset();
  std::vector<Request> requests = LoadRequests(records);
  if (!std::ranges::all_of(requests, NamesFields)) return kExchangeRefused;
  return InsertionRun(directory, messages, std::move(requests)).Run(job.file);
}

bool IsExchangeFile(FileSystem& files, const ExchangeRequestJob& job) {
  const std::unique_ptr<File> file = files.Open(job.file, OpenMode::kRead);
  if (file == nullptr) return false;
  const std::vector<std::byte> records = ReadRecords(*file);
  if (records.empty()) return false;
  return job.type != ExchangeType::kInsert ||
         std::ranges::all_of(LoadRequests(records), NamesFields);
}

uint32_t RepliedCard(FileSystem& files, const std::string& file) {
  const std::vector<std::byte> start = ReadStart(files, file, kReplyOffset + kShortReply.size);
  return start.size() < kReplyOffset + kShortReply.size
             ? 0
             : LoadLe32(start, kReplyOffset + kRepliedCard);
}

}  // namespace carnetel
