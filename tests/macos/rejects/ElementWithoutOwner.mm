// rejected: cannot initialize a variable of type '__strong id' with an rvalue of type 'AXUIElementRef'
#import <Foundation/Foundation.h>

#import <ApplicationServices/ApplicationServices.h>

bool isThere(pid_t process)
{
    id element = AXUIElementCreateApplication(process);
    return element;
}
