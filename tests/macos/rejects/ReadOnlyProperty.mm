// rejected: assignment to readonly property
#import "platform/macos/MoorlinePanel.h"

void place(MoorlinePanel *panel)
{
    panel.frame = NSMakeRect(0, 0, 460, 98);
}
