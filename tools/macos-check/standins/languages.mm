// The user's language and region: GNUstep's own, but for what a test has set.
#import "presets.h"

namespace {

IMP trueCurrentLocale, trueLocalizedString;

NSLocale* currentLocale(id self, SEL selector) {
    if (presets().locale)
        return presets().locale;
    return reinterpret_cast<NSLocale* (*)(id, SEL)>(trueCurrentLocale)(self, selector);
}

NSString* localizedString(id self, SEL selector, NSString* key, NSString* value, NSString* table) {
    if (NSString* translation = presets().translations[key])
        return translation;
    auto* method = reinterpret_cast<NSString* (*)(id, SEL, NSString*, NSString*, NSString*)>(
        trueLocalizedString);
    return method(self, selector, key, value, table);
}

} // namespace

void watchLanguages() {
    if (trueCurrentLocale)
        return;
    Method locale = class_getClassMethod(NSLocale.class, @selector(currentLocale));
    trueCurrentLocale = method_setImplementation(locale, reinterpret_cast<IMP>(currentLocale));
    Method string =
        class_getInstanceMethod(NSBundle.class, @selector(localizedStringForKey:value:table:));
    trueLocalizedString = method_setImplementation(string, reinterpret_cast<IMP>(localizedString));
}

void recording::setLocale(NSString* identifier) {
    presets().locale = [NSLocale localeWithLocaleIdentifier:identifier];
}
void recording::translate(NSString* english, NSString* translation) {
    presets().translations[english] = translation;
}
