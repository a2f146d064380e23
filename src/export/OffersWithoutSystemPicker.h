#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/SharedCopies.h"
#include "i18n/Localization.h"
#include "platform/Sharing.h"

namespace quendo {

/// Quendo's own share entries for platforms without a share picker: mail, the programs for the file's type,
/// copying. Also defines the mail's wording and the time after which a program counts as having accepted the
/// file. Main thread.
class OffersWithoutSystemPicker final : public SharingOffers {
 public:
  /// `items` and `title`: what is shared, and its title. `text`: the note itself, copied if a file is shared.
  /// All UTF-8. `localization` must outlive the picker; without `copies` no copies are made.
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
