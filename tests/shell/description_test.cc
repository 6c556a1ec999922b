#include "shell/description.h"

#include <unistd.h>

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using namespace std::string_literals;
using Shown = std::vector<QueuedMessages::Entry>;

// The first 108 bytes of a directory with one card, made at second 1'000'000'000 (3B9ACA00h).
std::string Header(const std::string& description, const std::string& owner) {
  std::string header = "CARNETEL DROV SOFTW. VER 05.00\0\0\r\n"s + description;
  header.resize(76, '\0');
  header += "\0\r\n\x1A"s + "\xD6\xA9\x06\x01"s + "\0\1\0\0"s + "\x60\0\0\0"s + "\0\3\0\0"s;
  header += "\1\0"s + "\0\3"s + "\x1F\0"s + "\x00\xCA\x9A\x3B"s + owner;
  return header;
}

class Describing : public WindowFixture {
 protected:
  void SetUp() override {
    memory.MakeFolder(home + "seat/");
    memory.MakeFolder(home + "other/");
  }
  void TearDown() override {
    session.reset();
    for (const char* name : {"CARNETEL.ADR", "shared.ADR"}) {
      ::unlink(DirectoryGuard::LockFilePath(home + "other/" + name).c_str());
    }
  }

  static StartupRequest FromSeat(int32_t number, const std::string& folder) {
    StartupRequest request;
    request.workstation_number = number;
    request.exchange_file_path = folder + "ECHANGE.DAT";
    return request;
  }
  // One card, no description, no owner.
  void OpenAlone() {
    Build({CardWith({{kSte1, "ALPHA"}})});
    StartSession();
    ASSERT_TRUE(session->OpenDirectoryChecked(DefaultPath(), false));
    stem = DefaultPath();
  }
  // The same as seat 3; the address file is the seat's.
  void OpenAtSeat() {
    stem = home + "shared";
    Build(stem, {CardWith({{kSte1, "ALPHA"}})});
    StartSession(FromSeat(3, home + "seat/"));
    ASSERT_TRUE(session->OpenDirectoryChecked(stem, false));
  }
  std::string Bytes() const {
    const std::vector<std::byte> bytes = memory.Contents(stem + ".DAN");
    return std::string(AsChars(bytes));
  }
  std::string HeaderBytes() const { return Bytes().substr(0, 108); }
  // Behind the back of the program, as another seat does it.
  void Patch(size_t offset, const std::string& bytes) {
    std::string all = Bytes();
    all.replace(offset, bytes.size(), bytes);
    memory.SetContents(stem + ".DAN", AsBytes(all));
  }

  std::string stem;
};

// ---- without seats ----

TEST_F(Describing, ShowsPathAndDescription) {
  OpenAlone();
  Patch(34, "\x90t\x82 \x85 Lyon"s);
  const DescriptionForm form(*session);
  EXPECT_EQ(form.template_id(), 103);
  EXPECT_FALSE(form.has_seat_lines());
  EXPECT_EQ(form.path(), home + "CARNETEL.DAN");
  EXPECT_EQ(form.description(), "Été à Lyon");
}

TEST_F(Describing, ADescriptionWithoutClosingZeroEndsAtItsLimit) {
  OpenAlone();
  Patch(34, std::string(41, 'd') + "x");
  EXPECT_EQ(DescriptionForm(*session).description(), std::string(41, 'd'));
}

TEST_F(Describing, WritesTheDescriptionAndNothingElse) {
  OpenAlone();
  const std::string before = Bytes();
  EXPECT_EQ(before.substr(0, 108), Header("", "\0\0"s));
  DescriptionForm form(*session);
  ASSERT_TRUE(form.Accept("Été à Lyon"));
  EXPECT_EQ(HeaderBytes(), Header("\x90t\x82 \x85 Lyon"s, "\0\0"s));
  EXPECT_EQ(Bytes().substr(108), before.substr(108));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(Describing, AShorterDescriptionLeavesNothingOfTheLongerOne) {
  OpenAlone();
  ASSERT_TRUE(DescriptionForm(*session).Accept("Fournisseurs"));
  ASSERT_TRUE(DescriptionForm(*session).Accept("Amis"));
  EXPECT_EQ(HeaderBytes(), Header("Amis", "\0\0"s));
  ASSERT_TRUE(DescriptionForm(*session).Accept(""));
  EXPECT_EQ(HeaderBytes(), Header("", "\0\0"s));
}

TEST_F(Describing, WithoutSeatsTheOwnerStays) {
  OpenAlone();
  Patch(106, "\5\1"s);
  DescriptionForm form(*session);
  EXPECT_TRUE(form.is_private());
  EXPECT_EQ(form.owner_line(), "Poste N° 261");
  ASSERT_TRUE(form.Accept("Amis"));
  EXPECT_EQ(HeaderBytes(), Header("Amis", "\5\1"s));
}

// Another seat may have added cards, another program may keep something of its own there.
TEST_F(Describing, KeepsWhatTheFileHasNow) {
  OpenAlone();
  Patch(30, "xy");
  Patch(76, "ABCDEFGHIJKL\x60\0\0\0PQRSTUVWXYZ012\6\0"s);
  ASSERT_TRUE(DescriptionForm(*session).Accept("Amis"));
  std::string expected = "CARNETEL DROV SOFTW. VER 05.00xy\r\nAmis"s;
  expected.resize(76, '\0');
  expected += "ABCDEFGHIJKL\x60\0\0\0PQRSTUVWXYZ012\6\0"s;
  EXPECT_EQ(HeaderBytes(), expected);
}

TEST_F(Describing, CutsAtFortyOneBytes) {
  OpenAlone();
  const std::string longest = "0123456789012345678901234567890123456789";
  ASSERT_TRUE(DescriptionForm(*session).Accept(longest + "éx"));
  EXPECT_EQ(HeaderBytes(), Header(longest + "\x82", "\0\0"s));
}

TEST_F(Describing, RefusesATextThatTheFileCannotHold) {
  OpenAlone();
  const std::string before = Bytes();
  DescriptionForm form(*session);
  EXPECT_FALSE(form.Accept("100 €"));
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_TRUE(form.Accept("100 F"));
  EXPECT_EQ(HeaderBytes(), Header("100 F", "\0\0"s));
}

TEST_F(Describing, AbandonWritesNothing) {
  OpenAlone();
  const std::string before = Bytes();
  files.StopAfter(0);
  const int changes = files.changes();
  DescriptionForm(*session).Abandon();
  EXPECT_EQ(files.changes(), changes);
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Describing, AFailedWriteIsTold) {
  OpenAlone();
  const std::string before = Bytes();
  DescriptionForm form(*session);
  files.StopAfter(0);
  EXPECT_FALSE(form.Accept("Amis"));
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kError, 79, "Accès au fichier " + form.path() + " impossible"}}));
  EXPECT_EQ(Bytes(), before);
  files.Heal();
  EXPECT_TRUE(form.Accept("Amis"));
  EXPECT_EQ(HeaderBytes(), Header("Amis", "\0\0"s));
}

TEST_F(Describing, WithoutADirectoryThereIsNothingToDescribe) {
  StartSession();
  DescriptionForm form(*session);
  EXPECT_EQ(form.description(), "");
  EXPECT_FALSE(form.is_private());
  EXPECT_FALSE(form.Accept("Amis"));
  EXPECT_EQ(
      messages.TakeShown(),
      (Shown{{MessageStyle::kError, 79, "Accès au fichier " + home + "CARNETEL.DAN impossible"}}));
  EXPECT_FALSE(memory.Exists(home + "CARNETEL.DAN"));
}

// ---- with seats ----

TEST_F(Describing, TheOwnerLineFollowsTheBox) {
  OpenAtSeat();
  DescriptionForm form(*session);
  EXPECT_EQ(form.template_id(), 132);
  EXPECT_TRUE(form.has_seat_lines());
  EXPECT_FALSE(form.is_private());
  EXPECT_EQ(form.owner_line(), "Carnetel Public");
  form.SetPrivate(true);
  EXPECT_TRUE(form.is_private());
  EXPECT_EQ(form.owner_line(), "  (Poste N° 03)");
  EXPECT_TRUE(session->private_requested());
  form.SetPrivate(false);
  EXPECT_FALSE(form.is_private());
  EXPECT_EQ(form.owner_line(), "Carnetel Public");
  EXPECT_FALSE(session->private_requested());
}

TEST_F(Describing, ATickedBoxMakesItThisSeats) {
  OpenAtSeat();
  const std::string before = Bytes();
  DescriptionForm form(*session);
  form.SetPrivate(true);
  EXPECT_EQ(Bytes(), before);
  ASSERT_TRUE(form.Accept("Secret"));
  EXPECT_EQ(HeaderBytes(), Header("Secret", "\3\0"s));
  EXPECT_EQ(Bytes().substr(108), before.substr(108));
}

TEST_F(Describing, ASeatAbove255TakesBothBytes) {
  stem = home + "shared";
  Build(stem, {CardWith({{kSte1, "ALPHA"}})});
  StartSession(FromSeat(0x0201, home + "seat/"));
  ASSERT_TRUE(session->OpenDirectoryChecked(stem, false));
  DescriptionForm form(*session);
  form.SetPrivate(true);
  ASSERT_TRUE(form.Accept(""));
  EXPECT_EQ(HeaderBytes(), Header("", "\1\2"s));
}

TEST_F(Describing, AClearedBoxMakesItPublicForOtherSeatsAtOnce) {
  OpenAtSeat();
  Patch(106, "\3\0"s);
  Session other({files, clock, progress, messages, profile}, FromSeat(4, home + "other/"), home);
  other.Start();
  messages.Answer(MessageButton::kCancel);
  EXPECT_FALSE(other.OpenDirectoryChecked(stem, true));
  EXPECT_EQ(messages.TakeShown().size(), 1u);
  DescriptionForm form(*session);
  EXPECT_TRUE(form.is_private());
  form.SetPrivate(false);
  ASSERT_TRUE(form.Accept(""));
  EXPECT_EQ(HeaderBytes(), Header("", "\0\0"s));
  EXPECT_TRUE(other.OpenDirectoryChecked(stem, true));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

// The box stands for the seat that confirms, whoever ticked it.
TEST_F(Describing, ABoxLeftTickedTakesTheDirectoryFromAnotherSeat) {
  OpenAtSeat();
  Patch(106, "\5\0"s);
  DescriptionForm form(*session);
  EXPECT_TRUE(form.is_private());
  EXPECT_EQ(form.owner_line(), "  (Poste N° 05)");
  ASSERT_TRUE(form.Accept(""));
  EXPECT_EQ(HeaderBytes(), Header("", "\3\0"s));
}

TEST_F(Describing, RestoreBringsBoxAndLineOfTheFileBack) {
  OpenAtSeat();
  Patch(34, "Amis");
  Patch(106, "\5\0"s);
  DescriptionForm form(*session);
  form.SetPrivate(false);
  form.SetPrivate(true);
  EXPECT_EQ(form.owner_line(), "  (Poste N° 03)");
  form.Restore();
  EXPECT_TRUE(form.is_private());
  EXPECT_EQ(form.owner_line(), "  (Poste N° 05)");
  EXPECT_EQ(form.description(), "Amis");
  EXPECT_FALSE(session->private_requested());
}

// ---- the wish for a private directory ----

TEST_F(Describing, NoEndLeavesTheWishBehind) {
  OpenAtSeat();
  const auto ticked = [this](const std::function<void(DescriptionForm&)>& end) {
    DescriptionForm form(*session);
    form.SetPrivate(true);
    EXPECT_TRUE(session->private_requested());
    end(form);
  };
  ticked([this](DescriptionForm& form) {
    EXPECT_TRUE(form.Accept(""));
    EXPECT_FALSE(session->private_requested());
  });
  ticked([this](DescriptionForm& form) {
    form.Abandon();
    EXPECT_FALSE(session->private_requested());
  });
  ticked([](DescriptionForm& /*form*/) {});
  EXPECT_FALSE(session->private_requested());
}

TEST_F(Describing, AnAbandonedTickDoesNotReachTheNextDirectory) {
  OpenAtSeat();
  {
    DescriptionForm form(*session);
    form.SetPrivate(true);
    form.Abandon();
  }
  ASSERT_TRUE(session->OpenDirectoryChecked(home + "next", false));
  EXPECT_EQ(session->directory()->main().header().owner(), 0);
}

}  // namespace
}  // namespace carnetel
