// NSUserDefaults: GNUstep's own, but a write can be made to fail.
#import "presets.h"

#include <utility>

static IMP trueSetObject;

static void setObject(id self, SEL selector, id value, NSString* key) {
    recording::add(@"NSUserDefaults setObject:forKey: %@ %@",
                   [value isKindOfClass:NSDate.class] ? @"NSDate" : @"NSData", key);
    if (std::exchange(presets().failsNextDefaultsWrite, false))
        return;
    reinterpret_cast<void (*)(id, SEL, id, NSString*)>(trueSetObject)(self, selector, value, key);
}

void watchDefaults() {
    if (trueSetObject)
        return;
    Method method = class_getInstanceMethod(NSUserDefaults.class, @selector(setObject:forKey:));
    trueSetObject = method_setImplementation(method, reinterpret_cast<IMP>(setObject));
}
