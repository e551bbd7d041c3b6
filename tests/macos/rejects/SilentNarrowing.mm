// rejected: implicit conversion turns floating-point number into integer
#import "platform/macos/MoorlinePanel.h"

int widthOf(MoorlinePanel *panel)
{
    return panel.frame.size.width;
}
