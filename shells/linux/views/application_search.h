#pragma once
// Finds applications by what the user types.

#include "shells/linux/launching/installed_applications.h"

#include <QString>

#include <vector>

namespace kestrel::linux_shell {

class ApplicationSearch {
  public:
    explicit ApplicationSearch(const std::vector<InstalledApplication>& applications);

    /// The positions of the applications that match `typed`, whatever the case and the accents of
    /// their letters; all of them when it is empty. First those whose name begins with it, then
    /// those of which a word does, then those that have it anywhere in their name, last those whose
    /// words, one by one, stand in the name or the other names; each in the order of the list.
    std::vector<int> find(const QString& typed) const;

  private:
    struct Known {
        QString name;
        QString all; ///< the name and the other names
    };
    std::vector<Known> known_;
};

} // namespace kestrel::linux_shell
