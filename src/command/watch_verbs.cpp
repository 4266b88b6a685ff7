#include <iostream>

#include "command/morning.h"
#include "command/verbs.h"
#include "platform/device/directory_watch_session.h"
#include "watch/watch_metrics.h"

namespace lunabrook {

namespace {

std::string whyNotDelivered(const DirectoryWatchSession& session, const std::filesystem::path& inbox) {
    if (const auto error = session.error()) {
        return error->localizedDescription;
    }
    return session.isPaired()
               ? "the watch application is not installed (" + inbox.string() + " holds no application.plist)"
               : "no watch is paired (its inbox would be the folder " + inbox.string() + ")";
}

}  // namespace

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
    complain("nothing was delivered: " + whyNotDelivered(session, inbox));
    return ExitStatus::failed;
}

}  // namespace lunabrook
