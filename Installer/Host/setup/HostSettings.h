#pragma once
#import <Foundation/Foundation.h>

/// What one run of the host is asked to do, from the command line as "-Key value".
struct HostSettings {
    NSString *flow;            ///< -Flow: "media" (default) or "web"
    NSString *language;        ///< -Language: a language code, default "EN"
    NSString *bundle;          ///< -Bundle: the plug-in; default: VantInstallation.bundle beside the host
    NSString *media;           ///< -Media: the media folder; default: the folder that holds the host
    NSString *webSelection;    ///< -WebSelection: the web selection file; nil: none
    NSString *site;            ///< -Site: address that the web selection's locations are below
    NSString *output;          ///< -Output: existing folder for timeline.txt and summary.json; nil: none are written
    NSString *installRoot;     ///< VANT_INSTALL_ROOT of the environment: where installed files are counted
    NSTimeInterval timeOut;    ///< -TimeOut: longest run in seconds, default 600
    NSTimeInterval linger;     ///< -Linger: longest stay after the end, in seconds; closing standard input ends it
    NSTimeInterval stillAfter; ///< -StillAfter: after how long without a change the host says so, default 60
    bool obeys;                ///< -Obey YES: lines on standard input are orders, see HostController
    bool debug;                ///< -Debug YES: trace log on
};

/// Reads the settings. The strings are autoreleased.
HostSettings VantHostSettings(void);
