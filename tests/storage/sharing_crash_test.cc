// A seat that dies at any write of a change leaves it to the others, who work on: whoever changes
// or opens the directory next brings it to its end or takes it back. Every card is there once
// afterwards, an acknowledged change is there, both indexes are right, and no note is left.
#include <gmock/gmock.h>

#include <functional>

#include "base/format_text.h"
#include "platform/fault_file_system.h"
#include "tests/storage/sharing_fixture.h"

namespace carnetel {
namespace {

// Bytes of a torn write that are there: a note is written whole or not at all, it lies in one
// sector. Inside a header, a card, a page, a whole index.
constexpr size_t kKeptBytes[] = {20, 98, 300, 505, 4000, 12000};

// What one operation does to the cards that lie in the directory before.
struct DeathCase {
  std::string name;
  std::vector<CardRecord> cards;
  // True when the operation was acknowledged.
  std::function<bool(Directory&)> run;
  // Old and new form of a card; one that is added has no old form, one that goes no new one.
  struct Fate {
    std::optional<CardRecord> old_form;
    std::optional<CardRecord> new_form;
  };
  std::vector<Fate> fates = {};
  // Done to the files first; the disk then fails from the opening on.
  std::function<void(MemoryFileSystem&)> damage = {};
};

void PrintTo(const DeathCase& death_case, std::ostream* out) {
  *out << death_case.name;
}

std::string Company(const CardRecord& card) {
  return card.FieldText(kSte1).bytes();
}

std::vector<CardRecord> FiveCards() {
  return {MakeCard("ALPHA", "ZOLA"), MakeCard("MIKE", "HUGO"), MakeCard("DELTA", "CAMUS"),
          MakeCard("MIKADO", "SAND"), MakeCard("TANGO", "BALZAC")};
}

CardRecord With(CardRecord card, int field, std::string_view text) {
  card.SetField(field, OemText(std::string(text)));
  return card;
}

bool Change(Directory& seat, const CardRecord& old_form, const CardRecord& new_form) {
  return ChangeCard(seat, OffsetOf(seat, Company(old_form)), new_form).result !=
         ChangeResult::kNotPossible;
}

DeathCase Adding(std::string name, std::vector<CardRecord> cards, size_t count, bool in_batch) {
  DeathCase made{std::move(name), std::move(cards), {}};
  for (size_t n = 1; n <= count; ++n) {
    made.fates.push_back({{}, MakeCard("N" + std::to_string(n), "P" + std::to_string(n))});
  }
  made.run = [fates = made.fates, in_batch](Directory& seat) {
    std::optional<Directory::Batch> batch;
    if (in_batch) batch.emplace(seat);
    return std::ranges::all_of(
        fates, [&seat](const DeathCase::Fate& fate) { return AddTo(seat, *fate.new_form); });
  };
  return made;
}

DeathCase Deleting(std::string name, std::vector<size_t> numbers, bool in_batch) {
  DeathCase made{std::move(name), FiveCards(), {}};
  for (const size_t number : numbers) made.fates.push_back({made.cards[number], {}});
  made.run = [fates = made.fates, in_batch](Directory& seat) {
    std::optional<Directory::Batch> batch;
    if (in_batch) batch.emplace(seat);
    return std::ranges::all_of(fates, [&seat](const DeathCase::Fate& fate) {
      return DeleteFrom(seat, Company(*fate.old_form));
    });
  };
  return made;
}

DeathCase Changing(std::string name, std::vector<size_t> numbers, int field, bool in_batch) {
  DeathCase made{std::move(name), FiveCards(), {}};
  for (const size_t number : numbers) {
    const std::string text = "ROMEO" + std::to_string(number);
    made.fates.push_back({made.cards[number], With(made.cards[number], field, text)});
  }
  made.run = [fates = made.fates, in_batch](Directory& seat) {
    std::optional<Directory::Batch> batch;
    if (in_batch) batch.emplace(seat);
    return std::ranges::all_of(fates, [&seat](const DeathCase::Fate& fate) {
      return Change(seat, *fate.old_form, *fate.new_form);
    });
  };
  return made;
}

DeathCase Mixed() {
  DeathCase made{"MixedBatch", FiveCards(), {}};
  made.fates = {{{}, MakeCard("NOVEMBER", "N")},
                {made.cards[0], With(made.cards[0], kSte1, "ROMEO")},
                {made.cards[1], {}},
                {made.cards[3], With(made.cards[3], kFax, "1")},
                {{}, MakeCard("OSCAR", "O")}};
  made.run = [fates = made.fates](Directory& seat) {
    const Directory::Batch batch(seat);
    return AddTo(seat, *fates[0].new_form) &&
           Change(seat, *fates[1].old_form, *fates[1].new_form) &&
           DeleteFrom(seat, Company(*fates[2].old_form)) &&
           Change(seat, *fates[3].old_form, *fates[3].new_form) && AddTo(seat, *fates[4].new_form);
  };
  return made;
}

DeathCase Repairing(std::string name, std::vector<std::string> extensions) {
  DeathCase made{std::move(name), FiveCards(), [](Directory&) { return true; }};
  made.damage = [extensions](MemoryFileSystem& files) {
    for (const std::string& extension : extensions) {
      files.Remove(std::string(kSharedStem) + extension);
    }
  };
  return made;
}

std::vector<DeathCase> AllCases() {
  return {Adding("Add", FiveCards(), 1, false),
          Adding("AddToAnEmptyDirectory", {}, 1, false),
          Adding("Adds", FiveCards(), 3, false),
          Adding("BatchOfAdds", FiveCards(), 30, true),
          Deleting("DeleteFirst", {0}, false),
          Deleting("DeleteMiddle", {2}, false),
          Deleting("DeleteLast", {4}, false),
          Deleting("Deletes", {1, 4, 0}, false),
          Deleting("BatchOfDeletes", {0, 4, 2}, true),
          Deleting("BatchOfAllDeletes", {4, 0, 3, 1, 2}, true),
          Changing("RewriteFirst", {0}, kFax, false),
          Changing("RewriteLast", {4}, kTel1, false),
          Changing("BatchOfRewrites", {4, 0, 2}, kFax, true),
          Changing("NewKeyFirst", {0}, kSte1, false),
          Changing("NewKeyMiddle", {2}, kNom, false),
          Changing("NewKeyLast", {4}, kSte1, false),
          Changing("NewKeys", {0, 4, 2}, kSte1, false),
          Changing("BatchOfNewKeys", {4, 0, 2}, kSte1, true),
          Mixed(),
          Repairing("OpeningWithoutFirstIndex", {".I01"}),
          Repairing("OpeningWithoutIndexes", {".I01", ".I02"})};
}

class SeatDeathTest : public SharingFixture, public ::testing::WithParamInterface<DeathCase> {
 protected:
  using Arm = std::function<void(FaultFileSystem&)>;

  void SetUp() override {
    one_ = NewSeat(1);
    for (const CardRecord& card : GetParam().cards) ASSERT_TRUE(AddTo(one(), card));
    one_->CloseDirectory();
    one_.reset();
    NewSeat(2).reset();
    MemoryFileSystem copy = files.Snapshot();
    const Seat other = NewSeat(2, copy);
    bool acknowledged = false;
    changes_ = Run(
        copy, [](FaultFileSystem&) {}, &acknowledged);
    ASSERT_TRUE(acknowledged);
    ASSERT_GT(changes_, 0);
  }
  // Seat 1 works on a disk with the fault that `arm` sets, and is gone when this returns.
  int Run(MemoryFileSystem& disk, const Arm& arm, bool* acknowledged) {
    FaultFileSystem faulty(disk);
    const bool from_the_start = static_cast<bool>(GetParam().damage);
    if (from_the_start) {
      GetParam().damage(disk);
      arm(faulty);
    }
    Directory seat({faulty, clock, progress}, SeatOptions(1));
    const bool opened = IsOpen(seat.OpenDirectory());
    const int before = from_the_start ? 0 : faulty.changes();
    if (!from_the_start) {
      EXPECT_TRUE(opened);
      arm(faulty);
    }
    if (opened) *acknowledged = GetParam().run(seat) && !seat.write_failed();
    const int changes = faulty.changes() - before;
    // Dead: nothing is closed in order.
    faulty.StopAfter(0);
    return changes;
  }
  static bool IsOneOf(const CardRecord& card, const std::vector<CardRecord>& cards) {
    return std::ranges::find(cards, card) != cards.end();
  }
  // What is wrong with the cards; `extra` has been added since.
  static std::string CardFault(const MemoryFileSystem& disk, bool acknowledged,
                               const std::vector<CardRecord>& extra) {
    const std::vector<CardRecord> there = CardsOf(Bytes(disk, ".DAN"));
    const auto times = [&there](const std::optional<CardRecord>& card) {
      return card ? std::ranges::count(there, *card) : 0;
    };
    std::vector<CardRecord> known = extra;
    std::vector<CardRecord> fated;
    for (const DeathCase::Fate& fate : GetParam().fates) {
      const auto forms = times(fate.old_form) + times(fate.new_form);
      const std::string name = Company(fate.old_form ? *fate.old_form : *fate.new_form);
      if (forms > 1) return name + " is there twice";
      if (forms == 0 && fate.old_form && fate.new_form) return name + " is lost";
      if (acknowledged && times(fate.old_form) != 0) return name + " has its old form";
      if (acknowledged && fate.new_form && forms == 0) return name + " was acknowledged";
      for (const auto& form : {fate.old_form, fate.new_form}) {
        if (form) known.push_back(*form);
      }
      if (fate.old_form) fated.push_back(*fate.old_form);
    }
    std::vector<CardRecord> untouched = extra;
    for (const CardRecord& card : GetParam().cards) {
      if (!IsOneOf(card, fated)) untouched.push_back(card);
    }
    for (const CardRecord& card : untouched) {
      if (times(card) != 1) return Company(card) + " times " + std::to_string(times(card));
      known.push_back(card);
    }
    for (const CardRecord& card : there) {
      if (!IsOneOf(card, known)) return "a mixture: " + Company(card);
    }
    return {};
  }
  std::string FaultAfterOpening(const MemoryFileSystem& left, bool acknowledged) {
    MemoryFileSystem disk = left.Snapshot();
    const Seat opened = NewSeat(3, disk);
    const std::string cards = CardFault(disk, acknowledged, {});
    if (!cards.empty()) return "after an opening: " + cards;
    const std::string fault = Fault(disk, 3);
    return fault.empty() ? fault : "after an opening: " + fault;
  }
  std::string FaultAfterAChange(MemoryFileSystem& disk, Directory& other, bool acknowledged) {
    const CardRecord next = MakeCard("XRAY", "X");
    if (!AddTo(other, next)) return "no change possible";
    const std::string cards = CardFault(disk, acknowledged, {next});
    if (!cards.empty()) return "after a change: " + cards;
    const std::string fault = Fault(disk, 2);
    return fault.empty() ? fault : "after a change: " + fault;
  }
  // Seat 1 dies while seat 2 has the directory open.
  std::string FaultAfterDeath(const Arm& arm) {
    MemoryFileSystem disk = files.Snapshot();
    const Seat other = NewSeat(2, disk);
    bool acknowledged = false;
    Run(disk, arm, &acknowledged);
    const std::string fault = FaultAfterOpening(disk, acknowledged);
    return fault.empty() ? FaultAfterAChange(disk, *other, acknowledged) : fault;
  }

  int changes_ = 0;
};

TEST_P(SeatDeathTest, WholeRun) {
  EXPECT_EQ(FaultAfterDeath([](FaultFileSystem&) {}), "");
}

TEST_P(SeatDeathTest, AtEveryWrite) {
  // Files that somebody has removed under a seat's hands are lost to it until a seat repairs them.
  const int first = GetParam().damage ? 1 : 0;
  for (int change = first; change <= changes_; ++change) {
    EXPECT_EQ(FaultAfterDeath([change](FaultFileSystem& disk) { disk.StopAfter(change); }), "")
        << "after " << change << " of " << changes_;
  }
}

TEST_P(SeatDeathTest, InEveryWrite) {
  for (int write = 1; write <= changes_; ++write) {
    for (const size_t kept : kKeptBytes) {
      EXPECT_EQ(FaultAfterDeath([&](FaultFileSystem& disk) { disk.TearWrite(write, kept); }), "")
          << "write " << write << " torn at " << kept;
    }
  }
}

// The seat that settles the change of a dead one dies at that itself; the third one settles it.
TEST_P(SeatDeathTest, OfTheOneThatSettlesToo) {
  for (int change = 1; change < changes_; ++change) {
    MemoryFileSystem left = files.Snapshot();
    bool acknowledged = false;
    Run(
        left, [change](FaultFileSystem& disk) { disk.StopAfter(change); }, &acknowledged);
    for (int settled = 0;; ++settled) {
      MemoryFileSystem disk = left.Snapshot();
      FaultFileSystem faulty(disk);
      faulty.StopAfter(settled);
      {
        Directory third({faulty, clock, progress}, SeatOptions(3));
        (void)third.OpenDirectory();
      }
      EXPECT_EQ(FaultAfterOpening(disk, acknowledged), "") << change << ", " << settled;
      if (faulty.changes() <= settled) break;
    }
  }
}

// A full disk is no death: the seat goes on, and what it could not write the others mend.
TEST_P(SeatDeathTest, OfTheDiskOnly) {
  EXPECT_EQ(FaultAfterDeath([](FaultFileSystem& disk) { disk.FillDisk(); }), "");
}

INSTANTIATE_TEST_SUITE_P(Changes, SeatDeathTest, ::testing::ValuesIn(AllCases()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace carnetel
