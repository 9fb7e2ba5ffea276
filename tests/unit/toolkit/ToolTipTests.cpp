#include "toolkit/ToolTip.h"

#include <QTextDocument>

#include <gtest/gtest.h>

TEST(ToolTip, ShowsEveryTextAsItIsWritten)
{
    for (const char* text :
         {"Stop protecting Calculator",
          "Disks & Files",
          "\"Quoted\" and 'quoted'",
          "<b>bold</b>",
          "a < b > c",
          "&amp;",
          "%1 and %2"}) {
        const QString tip = toolkit::toolTipOf(text);
        EXPECT_TRUE(Qt::mightBeRichText(tip)) << text;
        QTextDocument shown;
        shown.setHtml(tip);
        EXPECT_EQ(shown.toPlainText(), text);
    }
}
