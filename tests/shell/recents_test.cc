// The recent directories of the menu: their order, their keys in the profile, opening them.
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Shown = std::vector<QueuedMessages::Entry>;
using Texts = std::vector<std::string>;

class Recents : public WindowFixture {
 protected:
  void SetUp() override {
    for (const char* name : {"A", "B", "C", "D"}) Build(Stem(name), {CardWith({{kSte1, name}})});
    SetProfile("File1", Item(1, "A"));
    SetProfile("File2", Item(2, "B"));
    SetProfile("File3", Item(3, "C"));
    SetProfile("File4", Item(4, "D"));
  }
  std::string Stem(const std::string& name) const { return home + name; }
  std::string Item(int number, const std::string& name) const {
    return "&" + std::to_string(number) + " " + Stem(name) + ".DAN";
  }
  Texts Items(const Texts& names) const {
    Texts items;
    for (size_t i = 0; i < names.size(); ++i) {
      items.push_back(Item(static_cast<int>(i) + 1, names[i]));
    }
    return items;
  }
};

TEST_F(Recents, TheOpenedOneGoesInFront) {
  Start();
  EXPECT_EQ(view.recents, Items({"A", "B", "C", "D"}));
  view.Run(226);
  EXPECT_EQ(view.recents, Items({"B", "A", "C", "D"}));
  EXPECT_EQ(view.title, "Carnetel -  " + Stem("B") + ".DAN");
  EXPECT_EQ(Rows(), Texts{"B "});
  EXPECT_EQ(view.focus, 655);
  view.Run(228);
  EXPECT_EQ(view.recents, Items({"D", "B", "A", "C"}));
  view.Run(228);
  EXPECT_EQ(view.recents, Items({"C", "D", "B", "A"}));
  view.Run(227);
  EXPECT_EQ(view.recents, Items({"B", "C", "D", "A"}));
  EXPECT_EQ(Rows(), Texts{"B "});
  // Three are written by the window, the first one by the end of the run.
  ASSERT_TRUE(window().RequestQuit());
  EXPECT_EQ(Profile("File1"), Item(1, "A"));
  EXPECT_EQ(Profile("File2"), Item(2, "C"));
  EXPECT_EQ(Profile("File3"), Item(3, "D"));
  EXPECT_EQ(Profile("File4"), Item(4, "A"));
  session->Exit();
  EXPECT_EQ(Profile("File1"), Item(1, "B"));
}

TEST_F(Recents, TheOpenOneDoesNothing) {
  Start();
  list().SetCurrentRow(0);
  const int refills = view.refills;
  view.Run(225);
  EXPECT_EQ(view.refills, refills);
  EXPECT_NE(session->directory(), nullptr);
}

TEST_F(Recents, AnItemThatIsNotThereDoesNothing) {
  SetProfile("File4", "");
  Start();
  EXPECT_EQ(view.recents, Items({"A", "B", "C"}));
  const int refills = view.refills;
  view.Run(228);
  EXPECT_EQ(view.refills, refills);
}

TEST_F(Recents, AnItemGoneFromTheMenuLeavesItsOldValue) {
  SetProfile("File2", Item(2, "A"));
  SetProfile("File4", "");
  Start();
  EXPECT_EQ(view.recents, Items({"A", "C"}));
  Quit();
  EXPECT_EQ(Profile("File2"), Item(2, "C"));
  EXPECT_EQ(Profile("File3"), Item(3, "C"));
  EXPECT_EQ(Profile("File4"), "");
}

TEST_F(Recents, OtherSpellingsOfTheOpenOneAreTheSame) {
  SetProfile("File2", "&2 " + home + "./A.DAN");
  Start();
  EXPECT_EQ(view.recents, Items({"A", "C", "D"}));
}

TEST_F(Recents, AnotherSeatsDirectoryIsPassedOverSilently) {
  memory.MakeFolder(home + "seat/");
  std::vector<std::byte> bytes = memory.Contents(Stem("B") + ".DAN");
  bytes[MainHeader::kOwnerOffset] = std::byte{5};
  memory.SetContents(Stem("B") + ".DAN", bytes);
  StartupRequest request;
  request.exchange_file_path = home + "seat/ECHANGE.DAT";
  request.workstation_number = 3;
  Start(request);
  view.Run(226);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(Rows(), Texts{"A "});
  EXPECT_EQ(view.recents, Items({"A", "B", "C", "D"}));
  // The same one opens for its owner.
  Quit();
  request.workstation_number = 5;
  Start(request);
  view.Run(226);
  EXPECT_EQ(Rows(), Texts{"B "});
}

TEST_F(Recents, AFailedOneTellsItAndTheFormerDirectoryStays) {
  memory.SetContents(Stem("B") + ".DAN", AsBytes("no directory"));
  Start();
  messages.while_shown = [this] {
    // Painted while the box is up, when no directory is open.
    EXPECT_EQ(list().Label(0), "");
    EXPECT_EQ(list().marked_count(), 0);
  };
  view.Run(226);
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kError, 79, "Carnetel non valide - Choisissez un autre..."}}));
  EXPECT_EQ(Rows(), Texts{"A "});
  EXPECT_EQ(view.title, "Carnetel -  " + Stem("A") + ".DAN");
  EXPECT_EQ(view.recents, Items({"A", "B", "C", "D"}));
}

}  // namespace
}  // namespace carnetel
