// The part of AppKit that the edition sends messages to, declared as Apple declares it.
#pragma once

#import <AppKit/Application.h>
#import <AppKit/Drawing.h>
#import <AppKit/Menus.h>
#import <AppKit/Views.h>
