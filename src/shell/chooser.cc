#include "shell/chooser.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/format_text.h"
#include "link/viafax_file.h"
#include "shell/description.h"
#include "shell/directory_chooser.h"
#include "shell/search_form.h"
#include "storage/address_reorder.h"
#include "storage/directory_file.h"

namespace carnetel {
namespace {

constexpr size_t kFirstWidth = 22;
constexpr size_t kSecondWidth = 21;
constexpr size_t kNumberWidth = 15;
constexpr int kCompanyTitle = 254;
constexpr int kFirstStyleText = 267;
constexpr int kLastStyle = kCommandLastStyle - kCommandFirstStyle;
constexpr int kChooserTopic = 48;

std::string Cut(std::string text, size_t width) {
  return text.substr(0, width);
}

NumberKind NumberOf(const Role& role) {
  return NumberKindOf(static_cast<uint8_t>((role.parameter >> 16) & 0xFF));
}

}  // namespace

ChooserLogic::ChooserLogic(Session& session, ChooserView& view, DialogHost& dialogs,
                           ChooserKind kind, int list_capacity)
    : session_(session),
      view_(view),
      dialogs_(dialogs),
      kind_(kind),
      number_(NumberOf(session.role())),
      list_(*this, list_capacity),
      pickers_(list_),
      recents_(session) {
  list_.SetNumberFilter(InfoOf(number_).entry_flag);
  session_.OnClosing([this] { LetGoOfDirectory(); });
}

ChooserLogic::~ChooserLogic() {
  session_.OnClosing({});
}

void ChooserLogic::Start() {
  recents_.Read();
  if (viafax_output()) {
    viafax_option_ =
        session_.services().profile.Int(session_.ProfileSection(), kViafaxOptionKey, 0);
    viafax_form_ = ViafaxOptionForm(viafax_option_);
  }
  view_.CheckStyle(kCommandFirstStyle +
                   std::clamp(session_.settings().style_aff_list, 0, kLastStyle));
  ReloadAfterOpen();
  view_.FocusList();
}

void ChooserLogic::ReloadAfterOpen() {
  Directory* directory = session_.directory();
  list_.SetDirectory(directory);
  list_.SetLabelStyles(session_.settings().Labels());
  // A look-up for the caller may have chosen the current card just before.
  pickers_.SetDirectory(directory, Pickers::Position::kOfAddressFile);
  ShowPickers();
  if (directory != nullptr) {
    (void)RefreshIfChanged(*directory, RefreshView::kWholeFile);
    view_.SetRecents(recents_.Rebuild());
  }
  if (session_.TakeListPositionRestore()) list_.RestorePositionAtNextRefill();
  ShowTitles();
  list_.ListRefill(kAllLetters);
}

void ChooserLogic::LetGoOfDirectory() {
  pickers_.StorePosition();
  pickers_.StoreActiveSet();
  pickers_.SetDirectory(nullptr);
  list_.SetDirectory(nullptr);
}

void ChooserLogic::Dispatch(int command) {
  if (ended_) return;
  if (command >= kCommandRecent1 && command <= kCommandRecent4) return OpenRecent(command);
  if (command >= kCommandFirstStyle && command <= kCommandLastStyle) {
    return SetStyle(command - kCommandFirstStyle);
  }
  if (IsChooserGrey(command, state())) return;
  switch (command) {
    case kCommandOpen:
    case kButtonOpen:
      return ChooseAndReload();
    case kCommandChooserDescribe:
      return Describe();
    case kCommandQuit:
    case kButtonQuit:
    case kCommandEscape:
      return Quit();
    case kCommandViewCard:
    case kButtonViewCard:
      return view_.OpenConsultation();
    case kCommandSearch:
    case kButtonSearch:
      return Search();
    case kCommandDeselectAll:
    case kButtonDeselectAll:
      return AskToDeselect();
    case kCommandExtractCard:
    case kButtonExtractCard:
    case kCommandConfirm:
      return Extract(ExtractScope::kCard);
    case kCommandExtractSelection:
    case kButtonExtractSelection:
      return Extract(ExtractScope::kSelection);
    case kCommandExtractGroup:
    case kButtonExtractGroup:
      return Extract(ExtractScope::kGroup);
    case kCommandViafaxOption:
      return ChooseViafaxOption();
    case kCommandHelp:
    case kCommandHelpKey:
      return dialogs_.ShowHelp(kChooserTopic);
    case kCommandAbout:
      return dialogs_.ShowAbout();
    default:
      return;
  }
}

void ChooserLogic::Quit() {
  if (ended_) return;
  recents_.Write();
  End(0);
}

void ChooserLogic::End(int32_t result) {
  ended_ = true;
  result_ = result;
  session_.CloseDirectory();
  view_.EndWindow();
}

void ChooserLogic::OpenRecent(int command) {
  const std::string path = recents_.PathToOpen(command);
  if (path.empty() || session_.BelongsToAnotherSeat(path)) return;
  session_.OpenInPlace(path);
  ReloadAfterOpen();
}

void ChooserLogic::ChooseAndReload() {
  const Choice choice =
      ChooseDirectory(session_, dialogs_, ChooserTemplate::kOpen, ChooserMode::kDirectories, true);
  if (choice.confirmed && !ended_) ReloadAfterOpen();
}

void ChooserLogic::Describe() {
  if (session_.directory() == nullptr) return;
  DescriptionForm form(session_);
  (void)dialogs_.RunDescription(form);
}

void ChooserLogic::Search() {
  if (session_.directory() == nullptr) return;
  SearchForm form(*session_.directory(), list_, session_.services().messages);
  dialogs_.RunSearch(form);
  // The program was ended from outside while the dialog was open.
  if (ended_) return;
  form.End();
  view_.FocusList();
}

void ChooserLogic::AskToDeselect() {
  const MessageButton answer =
      session_.services().messages.ShowMessage(MessageStyle::kYesNo, 80, 40);
  if (answer == MessageButton::kYes) list_.DeselectListed();
}

void ChooserLogic::SetStyle(int style) {
  Settings settings = session_.settings();
  settings.style_aff_list = style;
  session_.StoreSettings(settings);
  list_.SetLabelStyles(settings.Labels());
  view_.CheckStyle(kCommandFirstStyle + style);
  ShowTitles();
  list_.ListRefill();
}

void ChooserLogic::ChooseViafaxOption() {
  ViafaxOptionForm form = viafax_form_;
  if (!dialogs_.RunViafaxOption(form)) return;
  viafax_form_ = form;
  viafax_option_ = form.option();
  session_.services().profile.WriteInt(session_.ProfileSection(), kViafaxOptionKey, viafax_option_);
}

ExtractRequest ChooserLogic::MakeRequest() const {
  ExtractRequest request;
  request.file = session_.request().exchange_file_path;
  request.kind = number_;
  request.styles = session_.settings().Labels();
  request.long_records = session_.role().long_records;
  request.viafax = viafax_output();
  request.viafax_option = viafax_option_;
  if (request.viafax) {
    request.user_name =
        ViafaxUserName(session_.services().files, session_.home_dir(), session_.appli_name());
  }
  return request;
}

ChooserRows ChooserLogic::Rows() const {
  ChooserRows rows;
  rows.items = list_.items();
  rows.current = rows.items.empty() ? -1 : list_.current_row();
  return rows;
}

void ChooserLogic::Extract(ExtractScope scope) {
  if (session_.directory() == nullptr) return;
  const ExtractRequest request = MakeRequest();
  const ExtractOutcome outcome = ChooserExtract(*session_.directory(), request, scope, Rows());
  MessageForm& messages = session_.services().messages;
  switch (outcome.result) {
    case ExtractOutcome::Result::kDone:
      return End(outcome.answer);
    case ExtractOutcome::Result::kNoFile:
      messages.ShowMessage(MessageStyle::kInformation, 80, 43, request.file);
      return Quit();
    case ExtractOutcome::Result::kNoNumber:
      messages.ShowMessage(MessageStyle::kError, 79, 103);
      return;
    case ExtractOutcome::Result::kNoRow:
      return;
  }
}

ChooserRow ChooserLogic::Row(int row) const {
  CardRecord card;
  Directory* directory = session_.directory();
  if (directory == nullptr || row < 0 || row >= list_.row_count() ||
      !directory->main().ReadCard(list_.CardOffset(row), card)) {
    return {};
  }
  const LabelStyles styles = session_.settings().Labels();
  const bool by_name = directory->key_field() == kNom;
  const auto person = [&](size_t width) {
    return OemText(
        Cut(ComposeCardLabel(card, LabelMode::kEmissionList, width, styles).bytes(), width));
  };
  const auto field = [&](int number, size_t width) {
    return OemText(Cut(card.FieldText(number).bytes(), width));
  };
  return {Utf8FromOem(by_name ? person(kFirstWidth) : field(kSte1, kFirstWidth)),
          Utf8FromOem(by_name ? field(kSte1, kSecondWidth) : person(kSecondWidth)),
          Utf8FromOem(field(InfoOf(number_).field, kNumberWidth))};
}

bool ChooserLogic::CurrentCard(CardRecord* card) const {
  Directory* directory = session_.directory();
  return directory != nullptr && list_.row_count() != 0 &&
         directory->main().ReadCard(list_.current_card(), *card);
}

ChooserState ChooserLogic::state() const {
  return {kind_, list_.row_count() != 0, list_.marked_count() != 0};
}

void ChooserLogic::ToggleRow(int row) {
  if (kind_ == ChooserKind::kMany) list_.ToggleMark(row);
}

void ChooserLogic::ToggleAndMove(int step) {
  if (kind_ == ChooserKind::kMany) list_.ToggleAndMove(step);
}

void ChooserLogic::ToggleSpan(int from, int to) {
  if (kind_ == ChooserKind::kMany) list_.ToggleSpan(from, to);
}

void ChooserLogic::Step(int step) {
  const int row = list_.current_row() + step;
  if (row >= 0 && row < list_.row_count()) list_.SetCurrentRow(row);
}

void ChooserLogic::JumpToLetter(char letter) {
  if (!list_.JumpToLetter(letter)) view_.Beep();
}

void ChooserLogic::PickGroup(int row) {
  pickers_.PickGroup(row);
  ShowPickers();
  view_.FocusList();
}

void ChooserLogic::PickSet(int row) {
  pickers_.PickSet(row, Pickers::Memory::kForgets);
  ShowPickers();
  view_.FocusList();
}

void ChooserLogic::ShowPickers() {
  view_.SetGroups(pickers_.groups(), pickers_.group());
  view_.SetSets(pickers_.sets(), pickers_.set());
}

void ChooserLogic::ShowTitles() {
  const int style = std::clamp(session_.settings().style_aff_list, 0, kLastStyle);
  const std::string company(LoadText(kCompanyTitle));
  const std::string person(LoadText(kFirstStyleText + style));
  const bool by_name = session_.settings().key_field == kNom;
  view_.SetColumnTitle(kTitleFirst, by_name ? person : company);
  view_.SetColumnTitle(kTitleSecond, by_name ? company : person);
  view_.SetColumnTitle(kTitleNumber, std::string(LoadText(InfoOf(number_).title_id)));
}

void ChooserLogic::ShowStatusOf(int item) {
  ShowStatusText(ChooserStatusTextOf(item, kind_));
}

void ChooserLogic::ShowStatusText(int text) {
  view_.SetStatus(std::string(LoadText(text)));
}

void ChooserLogic::TellNotLoaded() {
  if (list_.not_loaded_count() == 0) return;
  session_.services().messages.ShowMessage(MessageStyle::kInformation, 80, 279,
                                           list_.not_loaded_count());
}

void ChooserLogic::ShowCounts() {
  view_.SetPosition(list_.PositionText());
  view_.SetMarked(list_.marked_count());
  for (const ButtonInfo& button : ChooserButtons()) {
    view_.SetButton(button.id, !IsChooserGrey(button.id, state()));
  }
}

void ChooserLogic::ListRefilled() {
  view_.ListRefilled();
  ShowCounts();
  view_.UpdateConsultation();
}

void ChooserLogic::CurrentRowChanged() {
  view_.ShowCurrentRow();
  ShowCounts();
  view_.UpdateConsultation();
}

void ChooserLogic::RowRepainted(int row) {
  view_.RepaintRow(row);
}

void ChooserLogic::MarksChanged() {
  ShowCounts();
}

}  // namespace carnetel
