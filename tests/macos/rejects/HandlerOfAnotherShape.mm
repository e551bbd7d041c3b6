// rejected: cannot initialize a parameter of type 'void (^)(NSRunningApplication *__strong, NSError *__strong)'
#import <AppKit/AppKit.h>

void start(NSURL *application)
{
    [NSWorkspace.sharedWorkspace openApplicationAtURL:application
                                        configuration:[NSWorkspaceOpenConfiguration configuration]
                                    completionHandler:^(NSError *){}];
}
