// What fitted is shown in inverted colours, by the pixels of the fields, and pictures for eyes.
#include "tests/desktop/controls/painted_image.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/search_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

// Whether most of a line of pixels is of the colour of letters.
bool IsDark(const QImage& image, int from, int to, int y) {
  int dark = 0;
  for (int x = from + 1; x < to - 1; ++x) {
    if (qGray(image.pixel(x, y)) < 128) ++dark;
  }
  return dark * 2 > to - from - 2;
}

class SearchPicture : public SearchDialogTest {
 protected:
  // Which characters of the field are inverted, as "..xx".
  static std::string Inverted(MatchEdit& edit) {
    const QFontMetrics metrics = edit.fontMetrics();
    const QImage image = PaintedImage(edit);
    const int base = edit.width() - edit.contentsRect().width() + 4;
    // Above the letters.
    const int y = image.height() / 2 - metrics.height() / 2 + 1;
    return Pattern(edit.text().size(), [&](qsizetype at) {
      return IsDark(image, base + metrics.horizontalAdvance(edit.text().left(at)),
                    base + metrics.horizontalAdvance(edit.text().left(at + 1)), y);
    });
  }
  static std::string Inverted(MatchNotesEdit& notes) {
    const QImage image = PaintedImage(*notes.viewport());
    const auto place = [&](qsizetype at) {
      QTextCursor cursor(notes.document());
      cursor.setPosition(static_cast<int>(at));
      return notes.cursorRect(cursor);
    };
    return Pattern(notes.Text().size(), [&](qsizetype at) {
      if (notes.Text().at(at) == '\n') return false;
      return IsDark(image, place(at).left(), place(at + 1).left(), place(at).top() + 1);
    });
  }

 private:
  static std::string Pattern(qsizetype size, const std::function<bool(qsizetype)>& inverted) {
    std::string pattern;
    for (qsizetype at = 0; at < size; ++at) pattern += inverted(at) ? 'x' : '.';
    return pattern;
  }
};

TEST_F(SearchPicture, WhatFittedIsInverted) {
  StartWith({CardWith({{kSte1, "MAMMOUTH"}, {kVille, "Ammam sur Mam"}, {kNom, "Wamow"}})});
  Run([this] {
    TypeInto(150, "mam");
    TypeInto(156, "AM");
    EXPECT_EQ(Inverted(*Edit(150)), "...");
    Control(171)->setFocus();
    PressKey(Qt::Key_Return);
    ASSERT_EQ(Text(156), "Ammam sur Mam");
    EXPECT_EQ(Inverted(*Edit(150)), "xxx.....");
    EXPECT_EQ(Inverted(*Edit(156)), "xx.xx......xx");
    EXPECT_EQ(Inverted(*Edit(172)), ".....");
  });
}

TEST_F(SearchPicture, NotWhileTheFieldHasTheFocusAndNoMoreOnceItIsTypedIn) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kVille, "MAMMOUTH"}}),
             CardWith({{kSte1, "BETA"}, {kVille, "WMAM"}})});
  Run([this] {
    TypeInto(156, "mam");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Inverted(*Edit(156)), "xxx.....");
    Edit(156)->setFocus();
    EXPECT_EQ(Inverted(*Edit(156)), "........");
    Control(171)->setFocus();
    EXPECT_EQ(Inverted(*Edit(156)), "xxx.....");
    Edit(156)->setFocus();
    PressKey(Qt::Key_End);
    Type("M");
    Control(171)->setFocus();
    EXPECT_EQ(Inverted(*Edit(156)), ".........");
    Press(*dialog, 216);
    EXPECT_EQ(Inverted(*Edit(156)), ".xxx");
  });
}

TEST_F(SearchPicture, TheNotesToo) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kNotes, "MOM\r\nWOM\r\nMAM"}})});
  Run([this] {
    TypeInto(174, "m");
    PressKey(Qt::Key_Return, Qt::ControlModifier);
    Type("w");
    PressKey(Qt::Key_Return);
    ASSERT_EQ(Text(150), "ALPHA");
    EXPECT_EQ(Inverted(*Notes()), "..x.x......");
    Notes()->setFocus();
    EXPECT_EQ(Inverted(*Notes()), "...........");
    Control(171)->setFocus();
    EXPECT_EQ(Inverted(*Notes()), "..x.x......");
    Notes()->setFocus();
    Type("M");
    Control(171)->setFocus();
    EXPECT_EQ(Inverted(*Notes()), "............");
  });
}

TEST_F(SearchPicture, AndTheReferenceThatIsPicked) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kRef1, "MAMA"}, {kRef1 + 1, "WMAM"}})});
  Run([this] {
    TypeInto(164, "ma");
    References()->setCurrentIndex(1);
    Type("am");
    PressKey(Qt::Key_Return);
    ASSERT_EQ(Text(150), "ALPHA");
    auto& line = *qobject_cast<MatchEdit*>(References()->edit());
    EXPECT_EQ(line.text(), "MAMA");
    EXPECT_EQ(Inverted(line), "xxxx");
    References()->setCurrentIndex(1);
    EXPECT_EQ(Inverted(line), "..xx");
    Control(164)->setFocus();
    EXPECT_EQ(Inverted(line), "....");
    PressKey(Qt::Key_End);
    Type("W");
    Control(171)->setFocus();
    EXPECT_EQ(Inverted(line), ".....");
    References()->setCurrentIndex(2);
    EXPECT_EQ(Inverted(line), "");
    References()->setCurrentIndex(0);
    EXPECT_EQ(Inverted(line), "xxxx");
    References()->setCurrentIndex(1);
    EXPECT_EQ(Inverted(line), ".....");
  });
}

TEST_F(SearchPicture, AShortPostalCodeToo) {
  StartWith({CardWith({{kSte1, "COURT"}, {kShortPostalCode, "69003"}})});
  Run([this] {
    TypeInto(155, "69");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Inverted(*Edit(155)), "xx...");
  });
}

TEST_F(SearchPicture, ForEyes) {
  StartWith({CardWith({{kSte1, "BANQUE DE LYON"},
                       {kSte2, "Groupe lyonnais"},
                       {kAdr1, "12, rue de la R\x82publique"},
                       {kAdr2, "Quartier de la Part-Dieu"},
                       {kPostalCode, "69003 CEDEX 03"},
                       {kVille, "Lyon"},
                       {kPays, "France"},
                       {kPrenom, "Jean-Fran\x87ois"},
                       {kNom, "Durand"},
                       {kTel1, "04 72 00 00 00"},
                       {kFax, "04 72 00 00 01"},
                       {kRef1 + 1, "C0042"},
                       {kNotes, "Le mardi\r\nL'appeler \x85 Lyon"}})});
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Run([this, percent] {
      SavePicture(*dialog, QStringLiteral("search_empty"), percent);
      TypeInto(151, "lyon");
      TypeInto(155, "69");
      TypeInto(160, "00 00");
      TypeInto(174, "lyon");
      Control(164)->setFocus();
      PressKey(Qt::Key_Down);
      Type("42");
      PressKey(Qt::Key_Return);
      ASSERT_EQ(FocusId(), 216);
      SavePicture(*dialog, QStringLiteral("search_hit"), percent);
    });
  }
}

}  // namespace
}  // namespace carnetel::desktop
