#pragma once
#include <memory>
#include <string>
#include <vector>

class ZtOpPlugin;

// The host's plug-in database: every plug-in the host knows, by registered name, and the
// host's control mode.
class ZtOpDB {
public:
    enum EMode : int { kModeNormal = 0 };

    static EMode GetControlMode();
    static void SetControlMode(EMode mode);

    // Takes ownership of `plugin`. A later plug-in with a registered name that is already
    // listed does not displace the earlier one from look-ups.
    static void AddPlugin(ZtOpPlugin* plugin);
    // The first plug-in registered under `name`, or null.
    static ZtOpPlugin* GetPluginByName(const char* name);
    // Every plug-in, in the order of registration.
    static const std::vector<ZtOpPlugin*>& GetPlugins();
    // Destroys `plugin` if the database holds it; returns 1 if it did.
    static int RemovePlugin(ZtOpPlugin* plugin);
    // Destroys every plug-in, last registered first.
    static void RemoveAllPlugins();
};
