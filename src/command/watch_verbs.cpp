#include <iostream>

#include "command/morning.h"
#include "command/verbs.h"
#include "platform/device/directory_watch_session.h"
#include "watch/watch_metrics.h"

namespace lunabrook {

ExitStatus pushToWatch(const Device& device) {
    const std::filesystem::path inbox = device.preferences() / "watch";
    const Dictionary labels = displayLabels(morningOf(device));
    DirectoryWatchSession session(inbox);
    WatchMetrics watch(session);
    watch.updateWatchContextWithDict(labels);
    session.waitForActivations();

    if (session.deliveredContexts() > 0) {
        std::cout << "Delivered to the watch: the labels of " << labels.size() << " metrics\n";
        return ExitStatus::answered;
    }
    if (const auto error = session.updateError()) {
        device.tellFault({.file = inbox, .what = "received nothing: " + error->localizedDescription});
    } else if (!session.isPaired()) {
        std::cout << "Nothing was delivered: no watch is paired (its inbox would be the folder " << inbox.string()
                  << ")\n";
    } else {
        std::cout << "Nothing was delivered: the watch application is not installed (" << inbox.string()
                  << " holds no application.plist)\n";
    }
    return ExitStatus::failed;
}

}  // namespace lunabrook
