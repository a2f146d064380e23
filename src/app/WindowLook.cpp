#include "app/WindowLook.h"

#include <cmath>
#include <cstddef>

#include "text/Graphemes.h"
#include "text/Trimming.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

constexpr std::size_t kMaximumCharacters = 200;
/// One character can have any number of accents; a real one has fewer bytes than this.
constexpr std::size_t kMaximumCharacterLength = 64;
/// The luminance from which black and white stand out alike.
constexpr double kMiddleLuminance = 0.179;

/// Whether a character is a control character, a line break, or turns the direction of what stands around it.
bool isControl(std::string_view character) {
  const auto byte = [character](std::size_t at) { return static_cast<unsigned char>(character[at]); };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return true;
  // U+0080 to U+009F.
  if (character.size() == 2) return byte(0) == 0xC2 && byte(1) < 0xA0;
  if (character.size() != 3 || byte(0) != 0xE2) return false;
  // U+2028 to U+202E, and U+2066 to U+2069.
  return (byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) ||
         (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9);
}

double linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

}  // namespace

std::string windowTitleFor(std::string_view pageTitle) {
  std::string shown;
  std::size_t count = 0;
  everyCharacter(pageTitle, [&](std::string_view character) {
    if (isControl(character) || character.size() > kMaximumCharacterLength) return true;
    shown += character;
    return ++count < kMaximumCharacters;
  });
  const std::string readable = repairedUtf8(shown);
  const std::string_view kept = trimmed(readable);
  return std::string(kept.empty() ? kWindowTitle : kept);
}

Appearance appearanceFor(const std::optional<Color>& themeColor) {
  if (!themeColor || themeColor->alpha < 0.5) return Appearance::asDesktop;
  const double luminance = 0.2126 * linear(themeColor->red) + 0.7152 * linear(themeColor->green) +
                           0.0722 * linear(themeColor->blue);
  return luminance < kMiddleLuminance ? Appearance::dark : Appearance::light;
}

void WindowLook::pageTitleDidChange(const std::string& title) {
  if (surface_.window) surface_.window->setTitle(windowTitleFor(title));
}

void WindowLook::pageThemeColorDidChange(const std::optional<Color>& color) {
  if (surface_.window) surface_.window->setAppearance(appearanceFor(color));
}

}  // namespace quendo
