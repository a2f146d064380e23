#include "platform/gtk/rendering/Fonts.h"

#include <pango/pangocairo.h>

#include <memory>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

using FontDescription =
    std::unique_ptr<PangoFontDescription,
                    decltype([](PangoFontDescription* font) { pango_font_description_free(font); })>;

}  // namespace

// Names of families prove nothing: the generic ones are listed without any font behind them.
bool hasFonts() {
  PangoFontMap* fonts = pango_cairo_font_map_get_default();
  const auto context = adoptReference(pango_font_map_create_context(fonts));
  const FontDescription any(pango_font_description_from_string("Sans"));
  return adoptReference(pango_font_map_load_font(fonts, context.get(), any.get())) != nullptr;
}

}  // namespace quendo::gtk
