#pragma once

#include <gio/gio.h>

#include <memory>

namespace kk {

struct TGFree {
  void operator()(GError* iError) const { g_error_free(iError); }
  void operator()(GHashTable* iTable) const { g_hash_table_unref(iTable); }
  void operator()(GList* iObjects) const { g_list_free_full(iObjects, &g_object_unref); }
  template <class T>
  void operator()(T* iObject) const {
    g_object_unref(iObject);
  }
};

/// Owns one reference to an object of GLib, or a whole error, table or list of objects.
template <class T>
using TGPointer = std::unique_ptr<T, TGFree>;

}  // namespace kk
