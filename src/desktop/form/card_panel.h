// The fields of one card on two panels: company and address above, person, numbers, references and
// notes below. One widget serves every screen that shows a card; a kind tells which controls it has
// and whether they can be typed in. It holds no card: texts go in and out by control number.
#pragma once

#include <QLabel>
#include <QMap>
#include <QStackedWidget>
#include <QStringList>
#include <QWidget>

#include "desktop/controls/filtered_notes_edit.h"
#include "desktop/controls/match_edit.h"
#include "desktop/controls/panel_colours.h"
#include "desktop/controls/reference_combo.h"
#include "shell/card_form.h"
#include "shell/form_texts.h"

namespace carnetel::desktop {

class CardPanel : public QWidget {
  Q_OBJECT

 public:
  enum class Kind {
    kMain,          // viewer and editor: one line for the person at rest, one zone at a time
    kConsultation,  // read-only, everything at once
    kSearch,        // to be filled in, everything at once, without the person's title
    kReview,        // read-only, without references and notes, past which the keyboard goes
    kEntry,         // a card that is not in the directory yet, everything at once
  };

  explicit CardPanel(Kind kind, QWidget* parent = nullptr);

  void SetFieldText(int control, const QString& text);
  [[nodiscard]] QString FieldText(int control) const;
  void SetTexts(const FormTexts& texts);
  [[nodiscard]] FormTexts Texts() const;
  void SetReferences(const QStringList& texts);
  [[nodiscard]] QStringList References() const;
  // In a search: the pieces of a field's text, as it was set, to show as those that fitted. A line
  // break in the notes is one character.
  void SetMatches(int control, const QList<TextRun>& matches);
  // The same for the references, one list a row.
  void SetReferenceMatches(const QList<QList<TextRun>>& matches);

  // Takes the last change of a field back and forgets what could be undone.
  void UndoChange(int control);
  // The control or label itself; null when this kind has none of that number.
  [[nodiscard]] QWidget* Control(int control) const;

  // The input look: three fields for the person, other colours.
  void SetEditLook(bool on);
  [[nodiscard]] bool edit_look() const { return edit_look_; }
  void SetZone(FormZone zone);
  // The field that names cards has a bold label.
  void SetKeyField(int key_field);
  // Links the controls behind `from` in tab order; returns the last one.
  QWidget* SetTabOrderAfter(QWidget* from);
  // Where the buttons beside the zone and the sibling buttons go, one a row; only in the main form.
  void PlaceButton(int button, QWidget* widget);
  // A button that has been seen keeps its room when it goes, so that no field moves; one that never
  // shows takes none.
  void ShowButton(int button, bool visible);

 Q_SIGNALS:
  void fieldEdited(int control, int row);
  void fieldEntered(int control);
  void confirmed();

 private:
  void Build();
  QWidget* BuildCompany();
  QWidget* BuildPerson();
  QWidget* BuildPersonLine();
  QWidget* BuildZone();
  void BuildReferences();
  void BuildNotes();
  QWidget* AddButtonPlace(int button);
  FilteredEdit* AddEdit(int control, const QString& name, int shown_characters);
  QLabel* AddLabel(int id, const QString& text, QWidget* buddy = nullptr);
  void WatchEdit(FilteredEdit* edit, int control);
  void WatchNotes();
  [[nodiscard]] bool IsEditable() const {
    return kind_ != Kind::kConsultation && kind_ != Kind::kReview;
  }
  // Whether its fields look like those of an input form from the beginning.
  [[nodiscard]] bool IsEntry() const { return kind_ == Kind::kSearch || kind_ == Kind::kEntry; }
  void AlignFirstColumn();
  void RegisterColours();

  Kind kind_;
  bool edit_look_ = false;
  QMap<int, FilteredEdit*> edits_;
  QMap<int, QLabel*> labels_;
  QMap<int, QWidget*> button_places_;
  ReferenceCombo* references_ = nullptr;  // both null where there is no zone
  FilteredNotesEdit* notes_ = nullptr;
  QStackedWidget* person_ = nullptr;
  QStackedWidget* zone_ = nullptr;
  PanelColours* colours_ = nullptr;
  QWidget* company_panel_ = nullptr;
  QWidget* person_panel_ = nullptr;
};

}  // namespace carnetel::desktop
