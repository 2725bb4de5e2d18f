#pragma once
// A view controller that owns the core's state of its view.

#import <Foundation/Foundation.h>

@protocol KSTViewStateOwner <NSObject>

/// Destroys the state now, whoever else still holds the controller; a sheet that it shows goes as
/// well. Afterwards the controller does nothing. May be called again.
- (void)discardView;

@end
