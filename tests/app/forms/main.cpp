#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "app/forms/application.h"

// The windows need an application; its settings folder must not be the user's, and texts must take
// the same room on every machine.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
    qputenv("FONTCONFIG_FILE", TRACKSMITH_SOURCE_DIR "/tests/app/forms/fonts.conf");
    const tracksmith::forms::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
