#include "audio/music/MacNetEaseEnvironment.h"

#include "audio/music/AppleScripts.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>

namespace quill {

namespace {

NSString* bundleIdentifier() {
    return applescript::netEaseBundleIdentifier().toNSString();
}

NSURL* applicationURL() {
    return [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:bundleIdentifier()];
}

} // namespace

bool MacNetEaseEnvironment::isInstalled() {
    @autoreleasepool {
        return applicationURL() != nil;
    }
}

bool MacNetEaseEnvironment::isTrustedForAccessibility() {
    @autoreleasepool {
        NSDictionary* options = @{(id)kAXTrustedCheckOptionPrompt : @YES};
        return AXIsProcessTrustedWithOptions((CFDictionaryRef)options);
    }
}

bool MacNetEaseEnvironment::isRunning() {
    @autoreleasepool {
        return [NSRunningApplication runningApplicationsWithBundleIdentifier:bundleIdentifier()]
                   .count > 0;
    }
}

void MacNetEaseEnvironment::openInBackground() {
    @autoreleasepool {
        NSURL* url = applicationURL();
        if (url == nil)
            return;
        NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
        configuration.activates = NO;
        [[NSWorkspace sharedWorkspace] openApplicationAtURL:url
                                              configuration:configuration
                                          completionHandler:nil];
    }
}

} // namespace quill
