// rejected: no visible @interface for 'MoorlinePanel' declares the selector 'orderFrontGently'
#import "platform/macos/MoorlinePanel.h"

void show(MoorlinePanel *panel)
{
    [panel orderFrontGently];
}
