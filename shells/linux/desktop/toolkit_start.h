#pragma once
// What the toolkit says while it starts. It gives up without a display by ending the process with
// an abort and a paragraph; here that is one line of ours and an ordinary end. For main, around the
// making of the application object.

#include <QString>
#include <QtGlobal>

namespace kestrel::linux_shell {

/// One at a time. While it lives, the toolkit's messages wait; they are said when it goes. When the
/// toolkit gives up instead, the process ends with status 1 and tells, in one line on standard
/// error, what is missing. Nothing is asked of any display for that.
class ToolkitStart {
  public:
    ToolkitStart();
    ~ToolkitStart();
    ToolkitStart(const ToolkitStart&) = delete;
    ToolkitStart& operator=(const ToolkitStart&) = delete;

  private:
    QtMessageHandler before_;
};

/// What is missing for a display, as the environment tells it: a sentence without its full stop.
/// For the moment at which none could be had.
QString missingDisplay();

} // namespace kestrel::linux_shell
