#include "printing/pdf_file.h"

#include <hpdf.h>

namespace carnetel {
namespace {

constexpr PageSize kA4 = {595.276, 841.89};
constexpr PageSize kLetter = {612, 792};
constexpr const char* kFont = "Courier";
// Code page 1252, as lines come.
constexpr const char* kEncoding = "WinAnsiEncoding";
constexpr const char* kTitleEncoding = "UTF-8";
// Of a font of one point: every character of Courier has this width, an accent on a capital does
// not reach above the ascent.
constexpr FontShape kCourier = {0.6, 1.13};
constexpr double kAscent = 0.8;

PageSize PaperOf(MeasureUnit unit) {
  return unit == MeasureUnit::kInches ? kLetter : kA4;
}

PageFit FitOf(const PdfSetup& setup) {
  const PageSize paper = PaperOf(setup.unit);
  constexpr double kMargins = 2 * PdfTarget::kMargin;
  return FitPage({paper.width - kMargins, paper.height - kMargins}, kCourier, setup.columns,
                 setup.lines);
}

HPDF_REAL Real(double value) {
  return static_cast<HPDF_REAL>(value);
}

}  // namespace

// Without an error handler the library remembers its first error and answers nulls from then on.
class PdfTarget::Document {
 public:
  Document(const PdfSetup& setup, PdfMemory memory, const PageFit& fit)
      : paper_(PaperOf(setup.unit)),
        fit_(fit),
        pdf_(HPDF_NewEx(nullptr, memory.allocate, memory.release, 0, nullptr)) {
    Take(pdf_ != nullptr);
    if (!failed_) font_ = HPDF_GetFont(pdf_, kFont, kEncoding);
    Take(font_ != nullptr);
    Do([&] { return HPDF_SetCompressionMode(pdf_, HPDF_COMP_TEXT); });
    Do([&] { return HPDF_UseUTFEncodings(pdf_); });
    Do([&] { return HPDF_SetCurrentEncoder(pdf_, kTitleEncoding); });
    Do([&] { return HPDF_SetInfoAttr(pdf_, HPDF_INFO_TITLE, setup.title.c_str()); });
    AddPage();
  }
  ~Document() {
    if (pdf_ != nullptr) HPDF_Free(pdf_);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  [[nodiscard]] bool failed() const { return failed_; }

  void AddPage() {
    if (failed_) return;
    page_ = HPDF_AddPage(pdf_);
    Take(page_ != nullptr);
    Do([&] { return HPDF_Page_SetWidth(page_, Real(paper_.width)); });
    Do([&] { return HPDF_Page_SetHeight(page_, Real(paper_.height)); });
    Do([&] { return HPDF_Page_SetFontAndSize(page_, font_, Real(fit_.font_size)); });
  }

  void Draw(int number, std::string_view ansi) {
    const double top = kMargin + number * fit_.line_height;
    const double baseline = paper_.height - top - kAscent * fit_.font_size;
    const std::string text(ansi);
    Do([&] { return HPDF_Page_BeginText(page_); });
    Do([&] { return HPDF_Page_TextOut(page_, Real(kMargin), Real(baseline), text.c_str()); });
    Do([&] { return HPDF_Page_EndText(page_); });
  }

  std::optional<std::vector<std::byte>> Save() {
    Do([&] { return HPDF_SaveToStream(pdf_); });
    Do([&] { return HPDF_ResetStream(pdf_); });
    if (failed_) return {};
    HPDF_UINT32 size = HPDF_GetStreamSize(pdf_);
    std::vector<std::byte> bytes(size);
    HPDF_ReadFromStream(pdf_, reinterpret_cast<HPDF_BYTE*>(bytes.data()), &size);
    Take(size == bytes.size());
    return failed_ ? std::nullopt : std::optional(std::move(bytes));
  }

 private:
  void Take(bool done) { failed_ = failed_ || !done; }
  template <class Step>
  void Do(Step step) {
    if (!failed_) Take(step() == HPDF_OK);
  }

  PageSize paper_;
  PageFit fit_;
  HPDF_Doc pdf_;
  HPDF_Font font_ = nullptr;
  HPDF_Page page_ = nullptr;
  bool failed_ = false;
};

PdfTarget::PdfTarget(const PdfSetup& setup, PdfMemory memory)
    : PdfTarget(setup, memory, FitOf(setup)) {}

PdfTarget::PdfTarget(const PdfSetup& setup, PdfMemory memory, const PageFit& fit)
    : PagedTarget(fit.lines_per_page), document_(std::make_unique<Document>(setup, memory, fit)) {}

PdfTarget::~PdfTarget() = default;

bool PdfTarget::Ended() const {
  return document_ == nullptr || document_->failed();
}

std::optional<std::vector<std::byte>> PdfTarget::Finish() {
  if (Ended()) return {};
  const std::unique_ptr<Document> document = std::move(document_);
  return document->Save();
}

void PdfTarget::DrawLine(int number, std::string_view ansi) {
  if (!ansi.empty()) document_->Draw(number, ansi);
}

void PdfTarget::TurnPage() {
  document_->AddPage();
}

}  // namespace carnetel
