// Anchors, constraints, stack views and grids. Layout is not imitated: anchors and constraints do
// nothing, a stack view puts its views one below the other.
#import "presets.h"

@interface MacosCheckAnchor : NSObject
@end
@interface MacosCheckAnchor (Constraints)
- (id)constraintEqualToAnchor:(id)anchor;
- (id)constraintEqualToAnchor:(id)anchor constant:(CGFloat)constant;
- (id)constraintEqualToAnchor:(id)anchor multiplier:(CGFloat)multiplier;
- (id)constraintGreaterThanOrEqualToAnchor:(id)anchor;
- (id)constraintGreaterThanOrEqualToAnchor:(id)anchor constant:(CGFloat)constant;
- (id)constraintLessThanOrEqualToAnchor:(id)anchor;
- (id)constraintLessThanOrEqualToAnchor:(id)anchor constant:(CGFloat)constant;
- (id)constraintEqualToConstant:(CGFloat)constant;
- (id)constraintGreaterThanOrEqualToConstant:(CGFloat)constant;
- (id)constraintLessThanOrEqualToConstant:(CGFloat)constant;
@end

/// A constraint that does nothing but take its properties.
@interface MacosCheckConstraint : NSObject
@property(nonatomic) BOOL active;
@property(nonatomic) CGFloat constant;
@property(nonatomic) NSLayoutPriority priority;
@property(nonatomic, copy) NSString* identifier;
- (BOOL)isActive;
@end
@implementation MacosCheckConstraint
- (BOOL)isActive {
    return self.active;
}
@end

static id constraint(CGFloat constant = 0) {
    MacosCheckConstraint* made = [[MacosCheckConstraint alloc] init];
    made.constant = constant;
    return made;
}

@implementation MacosCheckAnchor
- (id)constraintEqualToAnchor:(id)anchor {
    (void)anchor;
    return constraint();
}
- (id)constraintEqualToAnchor:(id)anchor constant:(CGFloat)constant {
    (void)anchor;
    return constraint(constant);
}
- (id)constraintEqualToAnchor:(id)anchor multiplier:(CGFloat)multiplier {
    (void)anchor;
    (void)multiplier;
    return constraint();
}
- (id)constraintGreaterThanOrEqualToAnchor:(id)anchor {
    (void)anchor;
    return constraint();
}
- (id)constraintGreaterThanOrEqualToAnchor:(id)anchor constant:(CGFloat)constant {
    (void)anchor;
    return constraint(constant);
}
- (id)constraintLessThanOrEqualToAnchor:(id)anchor {
    (void)anchor;
    return constraint();
}
- (id)constraintLessThanOrEqualToAnchor:(id)anchor constant:(CGFloat)constant {
    (void)anchor;
    return constraint(constant);
}
- (id)constraintEqualToConstant:(CGFloat)constant {
    return ::constraint(constant);
}
- (id)constraintGreaterThanOrEqualToConstant:(CGFloat)constant {
    return ::constraint(constant);
}
- (id)constraintLessThanOrEqualToConstant:(CGFloat)constant {
    return ::constraint(constant);
}
@end

@implementation NSLayoutConstraint (MacosCheck)
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints {
    for (id one in constraints)
        [static_cast<MacosCheckConstraint*>(one) setActive:YES];
}
+ (void)deactivateConstraints:(NSArray<NSLayoutConstraint*>*)constraints {
    for (id one in constraints)
        [static_cast<MacosCheckConstraint*>(one) setActive:NO];
}
@end

@implementation NSView (MacosCheckLayout)
- (id)leadingAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)trailingAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)leftAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)rightAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)topAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)bottomAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)widthAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)heightAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)centerXAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)centerYAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)firstBaselineAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (id)lastBaselineAnchor {
    return [[MacosCheckAnchor alloc] init];
}
- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag {
    (void)flag;
}
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation {
    (void)priority;
    (void)orientation;
}
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation {
    (void)priority;
    (void)orientation;
}
@end

/// GNUstep lacks the class: clang makes its properties from the header, only the methods are
/// written here.
@implementation NSStackView {
    NSMutableArray<NSView*>* _arranged;
}
- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame]))
        self.spacing = 8;
    return self;
}
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views {
    NSStackView* stack = [[self alloc] initWithFrame:NSMakeRect(0, 0, 300, 300)];
    for (NSView* view in views)
        [stack addArrangedSubview:view];
    return stack;
}
- (NSArray<NSView*>*)arrangedSubviews {
    return [_arranged copy] ?: @[];
}
- (NSArray<NSView*>*)views {
    return self.arrangedSubviews;
}
- (void)addArrangedSubview:(NSView*)view {
    [self insertArrangedSubview:view atIndex:static_cast<NSInteger>(_arranged.count)];
}
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index {
    if (!_arranged)
        _arranged = [NSMutableArray array];
    [_arranged removeObject:view];
    [_arranged insertObject:view atIndex:static_cast<NSUInteger>(index)];
    [self addSubview:view];
    CGFloat y = 0;
    for (NSView* one in _arranged) {
        [one setFrameOrigin:NSMakePoint(0, y)];
        y += one.frame.size.height + self.spacing;
    }
}
- (void)removeArrangedSubview:(NSView*)view {
    [_arranged removeObject:view];
}
- (void)setCustomSpacing:(CGFloat)value afterView:(NSView*)view {
    setState(view, @selector(customSpacingAfterView:), @(value));
}
- (CGFloat)customSpacingAfterView:(NSView*)view {
    return [stateOf(view, @selector(customSpacingAfterView:)) doubleValue];
}
@end

@implementation NSGridRow (MacosCheck)
- (void)setRowAlignment:(NSGridRowAlignment)alignment {
    (void)alignment;
}
@end
