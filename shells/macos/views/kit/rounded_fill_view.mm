#include "shells/macos/views/kit/rounded_fill_view.h"

#import <QuartzCore/QuartzCore.h>

@implementation KSTRoundedFillView

- (instancetype)initWithFrame:(NSRect)frame color:(NSColor*)color radius:(CGFloat)radius {
    if ((self = [super initWithFrame:frame])) {
        _color = color;
        _radius = radius;
        self.wantsLayer = YES;
        self.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
    }
    return self;
}

- (instancetype)initWithFrame:(NSRect)frame {
    return [self initWithFrame:frame color:NSColor.separatorColor radius:0];
}

- (void)setColor:(NSColor*)color {
    _color = color;
    self.needsDisplay = YES;
}

- (BOOL)wantsUpdateLayer {
    return YES;
}

// Called with the view's own appearance as the current one, which the layer's colour needs: unlike
// the view's it does not change with the appearance.
- (void)updateLayer {
    CALayer* const layer = self.layer;
    layer.backgroundColor = self.color.CGColor;
    layer.cornerRadius = self.radius;
    layer.cornerCurve = kCACornerCurveContinuous;
}

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    self.needsDisplay = YES;
}

@end
