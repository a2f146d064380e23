#include "export/OffersWithoutSystemPicker.h"

#include <chrono>
#include <cstddef>
#include <utility>

namespace quendo {
namespace {

constexpr std::size_t kMaximumPrograms = 8;
// A program that cannot use the file usually exits at once.
constexpr std::chrono::milliseconds kProgramTrial{2000};

/// A mail subject is one line: control characters become spaces.
std::string singleLine(std::string text) {
  for (char& character : text) {
    if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) character = ' ';
  }
  return text;
}

/// Mail programs stop at the first NUL; the text after it must not be lost.
std::string withoutNul(const std::string& text) {
  std::string shown;
  for (const char character : text) {
    if (character == '\0') {
      shown += "\xEF\xBF\xBD";
    } else {
      shown += character;
    }
  }
  return shown;
}

}  // namespace

OffersWithoutSystemPicker::OffersWithoutSystemPicker(const std::vector<SharedItem>& items, std::string title,
                                                     std::string text, const Localization& localization,
                                                     std::weak_ptr<SharedCopies> copies)
    : title_(std::move(title)),
      text_(std::move(text)),
      localization_(localization),
      copies_(std::move(copies)) {
  for (const SharedItem& item : items) {
    if (item.kind == SharedItem::Kind::file) file_ = item.value;
    if (item.kind == SharedItem::Kind::link) link_ = item.value;
    // Text shared instead of the file is also the text to copy.
    if (item.kind == SharedItem::Kind::text) text_ = item.value;
  }
}

std::vector<SharingSection> OffersWithoutSystemPicker::sections(
    const std::vector<SharingProgram>& programs) const {
  std::vector<SharingSection> sections;
  sections.push_back({{localization_.tr("Enviar por e-mail"), mail()}});
  if (auto section = programSection(programs); !section.empty()) sections.push_back(std::move(section));
  sections.push_back(copySection());
  return sections;
}

// With the note attached, the body is just the link; otherwise it is the note's text, which starts with the
// title.
ShareByMail OffersWithoutSystemPicker::mail() const {
  std::string body = file_ ? "" : withoutNul(text_);
  if (link_) body += (body.empty() ? "" : "\n\n") + *link_;
  return {singleLine(title_), std::move(body), file_};
}

SharingSection OffersWithoutSystemPicker::programSection(const std::vector<SharingProgram>& programs) const {
  SharingSection section;
  if (!file_) return section;
  for (std::size_t i = 0; i < programs.size() && section.size() < kMaximumPrograms; ++i) {
    if (programs[i].isThisProgram) continue;
    section.push_back(
        {localization_.tr("Abrir com") + " " + programs[i].name, ShareWithProgram{i, *file_, kProgramTrial}});
  }
  return section;
}

SharingSection OffersWithoutSystemPicker::copySection() const {
  SharingSection section;
  if (file_) section.push_back({localization_.tr("Copiar arquivo"), CopySharedFile{*file_}});
  section.push_back({localization_.tr("Copiar texto"), CopySharedText{text_}});
  if (link_) section.push_back({localization_.tr("Copiar link"), CopySharedText{*link_}});
  return section;
}

std::optional<std::string> OffersWithoutSystemPicker::copyForAnotherProgram(const std::string& path) {
  const auto copies = copies_.lock();
  return copies ? copies->copyFile(path) : std::nullopt;
}

}  // namespace quendo
