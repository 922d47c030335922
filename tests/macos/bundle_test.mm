// What the bundle tells the system of the program.
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "app/branding.h"
#include "macos/stage_test.h"

namespace {

class Bundle : public StageTest {
 protected:
  Bundle() {
    NSData* bytes = [NSData dataWithContentsOfFile:@INFO_PLIST];
    info_ = [NSPropertyListSerialization propertyListWithData:bytes
                                                      options:NSPropertyListImmutable
                                                       format:NULL
                                                        error:NULL];
  }

  std::string text(NSString* key) const {
    id value = [info_ objectForKey:key];
    return [value isKindOfClass:[NSString class]] ? [value UTF8String] : "no text";
  }
  bool flag(NSString* key) const { return [[info_ objectForKey:key] boolValue]; }

 private:
  NSDictionary* info_ = nil;
};

TEST_F(Bundle, KeepsTheProgramOutOfTheDock) {
  EXPECT_TRUE(flag(@"LSUIElement"));
}

TEST_F(Bundle, NamesTheProgram) {
  EXPECT_EQ(text(@"CFBundleName"), Branding::kProductName);
  EXPECT_EQ(text(@"CFBundleExecutable"), "Vorda");
  EXPECT_EQ(text(@"CFBundleIconFile"), "Vorda");
  EXPECT_EQ(text(@"CFBundlePackageType"), "APPL");
  EXPECT_EQ(text(@"CFBundleIdentifier"), "com.halvek.vorda");
  EXPECT_EQ(text(@"NSPrincipalClass"), "NSApplication");
  EXPECT_TRUE(flag(@"NSHighResolutionCapable"));
}

TEST_F(Bundle, HasItsVersionAndCopyrightFromTheBuild) {
  EXPECT_EQ(text(@"CFBundleShortVersionString"), VERSION);
  EXPECT_EQ(text(@"CFBundleVersion"), VERSION);
  EXPECT_EQ(text(@"NSHumanReadableCopyright"), Branding::copyrightLine());
  EXPECT_EQ(text(@"LSMinimumSystemVersion"), OLDEST_SYSTEM);
}

}  // namespace
