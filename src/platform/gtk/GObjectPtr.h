#pragma once

#include <glib-object.h>

#include <memory>

namespace quendo::gtk {

struct GObjectRelease {
  template <typename T>
  void operator()(T* object) const {
    if (object) g_object_unref(object);
  }
};

/// Owns one reference to a GObject that has no C++ binding.
template <typename T>
using GObjectPtr = std::unique_ptr<T, GObjectRelease>;

/// Adopts the caller's reference.
template <typename T>
GObjectPtr<T> adoptReference(T* object) {
  return GObjectPtr<T>(object);
}

/// Adds a reference.
template <typename T>
GObjectPtr<T> addReference(T* object) {
  return GObjectPtr<T>(static_cast<T*>(g_object_ref(object)));
}

struct GFree {
  void operator()(void* memory) const { g_free(memory); }
};
using GCharPtr = std::unique_ptr<char, GFree>;

struct GErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};
using GErrorPtr = std::unique_ptr<GError, GErrorFree>;

}  // namespace quendo::gtk
