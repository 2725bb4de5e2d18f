#pragma once
// Owning pointers for what GLib hands out. Whoever uses them ignores GLib's error details: a
// failure is the absence of the result.

#include <gio/gio.h>

#include <memory>

namespace kestrel::linux_shell {

struct GlibRelease {
    void operator()(char* text) const { g_free(text); }
    void operator()(char** texts) const { g_strfreev(texts); }
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

using GlibText = std::unique_ptr<char, GlibRelease>;
using GlibTexts = std::unique_ptr<char*, GlibRelease>;
using GlibKeyFile = std::unique_ptr<GKeyFile, GlibRelease>;
using GlibMainContext = std::unique_ptr<GMainContext, GlibRelease>;

template <class T>
struct ObjectRelease {
    void operator()(T* object) const { g_object_unref(object); }
};

/// One reference to a GObject.
template <class T>
using ObjectPtr = std::unique_ptr<T, ObjectRelease<T>>;

} // namespace kestrel::linux_shell
