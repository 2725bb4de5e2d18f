#pragma once
// The running application as the desktop sees it.

namespace kestrel {

enum class ActivationPolicy {
    regular = 0,   ///< an ordinary application: in the dock or task bar, can be activated
    accessory = 1, ///< an agent: only its status item shows
};

/// Main thread only.
class Application {
  public:
    virtual ~Application() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Makes this the application that receives the user's keys, whatever is active now.
    virtual void activate() = 0;

    /// Ends the program: the event loop ends and the call returns, or the process ends inside the
    /// call. Nothing may be left to do after it.
    virtual void terminate() = 0;
};

} // namespace kestrel
