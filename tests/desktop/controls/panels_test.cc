#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

#include "desktop/controls/nice_frame.h"
#include "desktop/controls/panel_colours.h"
#include "tests/desktop/controls/painted_image.h"

namespace carnetel::desktop {
namespace {

QPalette Desktop(const QColor& face, const QColor& window) {
  QPalette palette;
  palette.setColor(QPalette::Button, face);
  palette.setColor(QPalette::Window, face);
  palette.setColor(QPalette::Base, window);
  return palette;
}
const QPalette kLight = Desktop(QColor(239, 239, 239), Qt::white);
const QPalette kDark = Desktop(QColor(53, 53, 53), QColor(30, 30, 30));

TEST(PanelPalette, RestIsDarkBlueOnTheFaceColour) {
  const QPalette rest = PanelPalette(kLight, PanelLook::kRest, PanelRole::kText);
  EXPECT_EQ(rest.color(QPalette::Base), QColor(239, 239, 239));
  EXPECT_EQ(rest.color(QPalette::Window), QColor(239, 239, 239));
  EXPECT_EQ(rest.color(QPalette::Text), QColor(0, 0, 128));
  EXPECT_EQ(rest.color(QPalette::WindowText), QColor(0, 0, 128));
}

TEST(PanelPalette, EditLookIsDarkRedOnTheWindowColour) {
  const QPalette edit = PanelPalette(kLight, PanelLook::kEdit, PanelRole::kText);
  EXPECT_EQ(edit.color(QPalette::Base), QColor(255, 255, 255));
  EXPECT_EQ(edit.color(QPalette::Text), QColor(128, 0, 0));
}

TEST(PanelPalette, NumbersAndReferencesAreDarkRedAlways) {
  for (const PanelLook look : {PanelLook::kRest, PanelLook::kEdit}) {
    const QPalette palette = PanelPalette(kLight, look, PanelRole::kReference);
    EXPECT_EQ(palette.color(QPalette::WindowText), QColor(128, 0, 0));
  }
}

TEST(PanelPalette, DisabledTextIsTheDesktopsGrey) {
  const QPalette rest = PanelPalette(kLight, PanelLook::kRest, PanelRole::kText);
  EXPECT_EQ(rest.color(QPalette::Disabled, QPalette::Text),
            kLight.color(QPalette::Disabled, QPalette::WindowText));
}

TEST(PanelPalette, DarkDesktopsGetLighterKin) {
  const QPalette rest = PanelPalette(kDark, PanelLook::kRest, PanelRole::kText);
  EXPECT_GT(rest.color(QPalette::Text).lightness(), 150);
  EXPECT_GT(rest.color(QPalette::Text).blue(), rest.color(QPalette::Text).red());
  const QPalette edit = PanelPalette(kDark, PanelLook::kEdit, PanelRole::kText);
  EXPECT_GT(edit.color(QPalette::Text).lightness(), 150);
  EXPECT_GT(edit.color(QPalette::Text).red(), edit.color(QPalette::Text).blue());
}

TEST(PanelColours, SwitchesAllMembersAndFollowsTheDesktop) {
  const QPalette former = QApplication::palette();
  QApplication::setPalette(kLight);
  QLabel label;
  QLabel number;
  PanelColours colours;
  colours.Add(&label, PanelRole::kText);
  colours.Add(&number, PanelRole::kReference);
  EXPECT_EQ(label.palette().color(QPalette::WindowText), QColor(0, 0, 128));
  colours.SetLook(PanelLook::kEdit);
  EXPECT_EQ(label.palette().color(QPalette::WindowText), QColor(128, 0, 0));
  colours.SetLook(PanelLook::kRest);
  QApplication::setPalette(kDark);
  QCoreApplication::processEvents();
  EXPECT_GT(label.palette().color(QPalette::WindowText).lightness(), 150);
  EXPECT_GT(number.palette().color(QPalette::WindowText).lightness(), 150);
  QApplication::setPalette(former);
}

TEST(PanelColours, OutlivesItsMembers) {
  PanelColours colours;
  {
    QLabel label;
    colours.Add(&label, PanelRole::kText);
  }
  colours.SetLook(PanelLook::kEdit);
  EXPECT_EQ(colours.look(), PanelLook::kEdit);
}

QImage Painted(NiceFrame::Kind kind) {
  NiceFrame frame(2000, kind);
  frame.setPalette(kLight);
  frame.resize(20, 20);
  return PaintedImage(frame);
}

TEST(NiceFrame, RaisedAndSunkenAreEachOthersReverse) {
  const QImage raised = Painted(NiceFrame::Kind::kRaised);
  const QImage sunken = Painted(NiceFrame::Kind::kSunken);
  EXPECT_EQ(raised.pixel(10, 0), qRgb(255, 255, 255));
  EXPECT_LT(qGray(raised.pixel(10, 19)), 200);
  EXPECT_LT(qGray(sunken.pixel(10, 0)), 200);
  EXPECT_EQ(sunken.pixel(10, 19), qRgb(255, 255, 255));
}

TEST(NiceFrame, AJoinedFrameHasNoUpperEdge) {
  const QImage joined = Painted(NiceFrame::Kind::kJoined);
  EXPECT_EQ(joined.pixel(10, 0), joined.pixel(10, 10));
  EXPECT_NE(joined.pixel(10, 19), joined.pixel(10, 10));
}

}  // namespace
}  // namespace carnetel::desktop
