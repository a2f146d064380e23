#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/SharedCopies.h"
#include "i18n/Localization.h"
#include "platform/Sharing.h"

namespace quendo {

/// What Quendo itself offers to do with a note where the platform has no share picker of its own: a mail, the
/// programs for the file's type, copying. The mail's words, and the rule when a program counts as having
/// taken the file, are here too. Main thread.
class OffersWithoutSystemPicker final : public SharingOffers {
 public:
  /// `items` and `title`: what is shared, and its title. `text`: the note itself, which is copied where a
  /// file is shared. All of it UTF-8. `localization` outlives the picker; without `copies` there are none.
  OffersWithoutSystemPicker(const std::vector<SharedItem>& items, std::string title, std::string text,
                            const Localization& localization, std::weak_ptr<SharedCopies> copies);

  std::vector<SharingSection> sections(const std::vector<SharingProgram>& programs) const override;
  std::optional<std::string> copyForAnotherProgram(const std::string& path) override;

 private:
  ShareByMail mail() const;
  SharingSection programSection(const std::vector<SharingProgram>& programs) const;
  SharingSection copySection() const;

  std::string title_;
  std::string text_;
  std::optional<std::string> file_;
  std::optional<std::string> link_;
  const Localization& localization_;
  std::weak_ptr<SharedCopies> copies_;
};

}  // namespace quendo
