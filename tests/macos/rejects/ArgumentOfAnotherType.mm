// rejected: no viable conversion from 'NSString *' to 'NSRect'
#import "platform/macos/MoorlinePanel.h"

void place(MoorlinePanel *panel)
{
    [panel setFrame:@"at the bottom" display:YES];
}
