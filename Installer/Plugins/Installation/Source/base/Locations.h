#import <Foundation/Foundation.h>

/// Paths under the process's temporary folder, which the host and the pane share.
extern NSString *const VantUserSettingsFile;    ///< the user's choices, written by the host
extern NSString *const VantWebSelectionFile;    ///< the components to download, written by the host
extern NSString *const VantMediaSelectionFile;  ///< the components on the media, written by the host
extern NSString *const VantKeptModelInfoFile;   ///< written by the host; only ever removed here
extern NSString *const VantWebInstallErrorFile; ///< left by an earlier run; only ever removed here
extern NSString *const VantDownloadFolder;      ///< downloaded archives and what they expand into
extern NSString *const VantProfilesFolder;      ///< where colour profiles are staged

/// The full path of a path under the process's temporary folder.
NSString *VantTemporaryPath(NSString *relativePath);

/// Makes sure that a folder is there, with those above it. NO when there is none afterwards: not every platform's
/// answer to the creation tells of a file in the folder's place.
BOOL VantEnsureFolder(NSString *path);

/// As above; what is made is the user's alone (mode 0700).
BOOL VantEnsurePrivateFolder(NSString *path);

/// Whether a folder is there and not empty; NO for nil.
BOOL VantFolderHoldsAnything(NSString *path);

/// The folder that holds the host application's bundle, which is the root of the installation media.
NSString *VantMediaRoot(void);

/// The path of an installation package among the host application's resources; nil when the host lacks it.
NSString *VantHostPackagePath(NSString *name);
