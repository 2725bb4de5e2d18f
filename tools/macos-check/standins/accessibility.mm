// What assistive programs are told, none of which runs here.
#import "presets.h"

void NSAccessibilityPostNotificationWithUserInfo(id element, NSString* notification,
                                                 NSDictionary* userInfo) {
    recording::add(@"NSAccessibilityPostNotificationWithUserInfo %@ %@ %@ %@",
                   NSStringFromClass([element class]), notification,
                   userInfo[NSAccessibilityAnnouncementKey], userInfo[NSAccessibilityPriorityKey]);
    presets().announcingElement = element;
}

id recording::announcingElement() { return presets().announcingElement; }
