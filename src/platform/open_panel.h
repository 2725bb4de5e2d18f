#pragma once
// The desktop's own dialog for choosing one file or application.

#include <optional>
#include <string>

namespace kestrel {

struct OpenPanelOptions {
    enum class Content {
        applications, ///< only what the platform calls an application can be picked
        anyFile,
    };
    enum class StartFolder {
        applications, ///< the system's applications folder
        desktop,      ///< the user's Desktop
    };

    Content content = Content::anyFile;
    StartFolder startFolder = StartFolder::desktop;
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
    bool resolvesAliases = true;
};

/// What the user has picked.
struct ChosenFile {
    std::string path; ///< absolute, without any "~"

    /// What the platform calls an application, where that is not its file's name; never empty.
    std::optional<std::string> name;

    friend bool operator==(const ChosenFile&, const ChosenFile&) = default;
};

/// Main thread only.
class OpenPanel {
  public:
    virtual ~OpenPanel() = default;

    /// Shows the dialog and returns when it has closed; the event loop runs meanwhile, so the
    /// caller may be gone when this returns. Nothing when the user cancelled or the platform
    /// yields no path.
    virtual std::optional<ChosenFile> runModal(const OpenPanelOptions& options) = 0;
};

} // namespace kestrel
