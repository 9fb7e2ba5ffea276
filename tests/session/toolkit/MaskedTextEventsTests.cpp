// What assistive tools are told of, and what of it reaches the platform.
#include "accessibility/AccessibilityBus.h"
#include "qt/Input.h"
#include "qt/QtOnPrivateDesktop.h"
#include "qt/WaitFor.h"
#include "toolkit/EditingField.h"
#include "toolkit/MaskedTextEvents.h"

#include <QAccessible>
#include <QListView>
#include <QStringListModel>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

auto* const ENVIRONMENT = new support::QtOnPrivateDesktop({.keyring = false});
[[maybe_unused]] const auto* const REGISTERED = testing::AddGlobalTestEnvironment(ENVIRONMENT);

constexpr int NOWHERE = -1;

struct Told
{
    QAccessible::Event type;
    const QObject* object;
    QString removed;
    QString inserted;
    int place = NOWHERE;
    int caret = NOWHERE;
};

std::ostream& operator<<(std::ostream& stream, const Told& event)
{
    return stream << event.type << " -\"" << event.removed.toStdString() << "\" +\""
                  << event.inserted.toStdString() << "\" at " << event.place << ", caret at "
                  << event.caret;
}

bool operator==(const Told& one, const Told& other)
{
    return one.type == other.type && one.object == other.object && one.removed == other.removed &&
           one.inserted == other.inserted && one.place == other.place && one.caret == other.caret;
}

/// What the platform gets, in its place.
std::vector<Told> heard;

void hear(QAccessibleEvent* event)
{
    Told told{event->type(), event->object(), {}, {}};
    const auto fill = [&told](const auto& change) {
        told.place = change.changePosition();
        told.caret = change.cursorPosition();
    };
    if (event->type() == QAccessible::TextInserted) {
        const auto& inserted = *static_cast<QAccessibleTextInsertEvent*>(event);
        fill(inserted);
        told.inserted = inserted.textInserted();
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto& removed = *static_cast<QAccessibleTextRemoveEvent*>(event);
        fill(removed);
        told.removed = removed.textRemoved();
    } else if (event->type() == QAccessible::TextUpdated) {
        const auto& updated = *static_cast<QAccessibleTextUpdateEvent*>(event);
        fill(updated);
        told.removed = updated.textRemoved();
        told.inserted = updated.textInserted();
    }
    heard.push_back(told);
}

class MaskedTextEvents : public testing::Test
{
protected:
    void SetUp() override
    {
        // What nobody hears is not even told to the handlers.
        ASSERT_TRUE(support::waitFor([] { return QAccessible::isActive(); }));
        QAccessible::installUpdateHandler(hear);
        masking.emplace();
        field.setEchoMode(QLineEdit::Password);
        heard.clear();
    }

    void TearDown() override
    {
        masking.reset();
        QAccessible::installUpdateHandler(nullptr);
    }

    static void type(QWidget& widget, const QString& text)
    {
        for (const QChar character : text) {
            support::press(widget, Qt::Key_unknown, character);
        }
    }

    /// Everything that can be done to a text, with texts of "secret" alone.
    static void changeInEveryWay(QLineEdit& changed)
    {
        type(changed, "secret");
        support::press(changed, Qt::Key_Backspace);
        support::press(changed, Qt::Key_Home);
        support::press(changed, Qt::Key_Delete);
        changed.setSelection(1, 2);
        type(changed, "s");
        changed.selectAll();
        type(changed, "e");
        changed.insert("cret");
        changed.setText("tercets");
        changed.setText("erect");
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&changed);
        spoken->setText(QAccessible::Value, "crest");
        if (QAccessibleEditableTextInterface* const text = spoken->editableTextInterface()) {
            text->replaceText(0, 2, "ec");
            text->insertText(1, "t");
            text->deleteText(0, 1);
        }
        changed.clear();
        changed.undo();
        changed.redo();
        changed.del();
    }

    static QString textsHeard()
    {
        QString all;
        for (const Told& event : heard) {
            all += event.removed + event.inserted;
        }
        return all;
    }

    static QString marks(qsizetype number)
    {
        QLineEdit shown("x");
        shown.setEchoMode(QLineEdit::Password);
        return QString(number, shown.displayText().front());
    }

    accessibility::AccessibilityBus tools{ENVIRONMENT->desktop()};
    toolkit::EditingField field;
    std::optional<toolkit::MaskedTextEvents> masking;
};

using Refusals = MaskedTextEvents;

} // namespace

TEST_F(MaskedTextEvents, TheToolkitByItselfTellsThePassword)
{
    masking.reset();
    type(field, "secret");
    field.clear();
    EXPECT_TRUE(textsHeard().contains("secretsecret")); // typed, and cleared
}

TEST_F(MaskedTextEvents, NoChangeOfAMaskedTextTellsACharacterOfIt)
{
    for (const auto mode :
         {QLineEdit::Password, QLineEdit::PasswordEchoOnEdit, QLineEdit::NoEcho}) {
        field.setEchoMode(mode);
        changeInEveryWay(field);
        for (const QChar character : QString("secrt")) {
            EXPECT_FALSE(textsHeard().contains(character)) << mode;
        }
    }
}

TEST_F(MaskedTextEvents, AreTheSameAsWithoutMasksButForTheirTexts)
{
    for (const auto mode : {QLineEdit::Password, QLineEdit::Normal}) {
        toolkit::EditingField masked;
        toolkit::EditingField plain;
        masked.setEchoMode(mode);
        plain.setEchoMode(mode);
        heard.clear();
        changeInEveryWay(masked);
        const std::vector<Told> told = heard;
        masking.reset();
        heard.clear();
        changeInEveryWay(plain);
        masking.emplace();

        std::vector<Told> expected = heard;
        for (Told& event : expected) {
            event.object = &masked;
            if (mode == QLineEdit::Password) {
                event.removed = marks(event.removed.size());
                event.inserted = marks(event.inserted.size());
            }
        }
        EXPECT_FALSE(told.empty());
        EXPECT_EQ(told, expected) << mode;
    }
}

TEST_F(MaskedTextEvents, AFieldThatShowsNothingTellsNotHowMuchIsTyped)
{
    field.setEchoMode(QLineEdit::NoEcho);
    type(field, "secret");
    field.clear();
    EXPECT_EQ(textsHeard(), "");
}

TEST_F(MaskedTextEvents, ATableThatIsResetKnowsItsRows)
{
    QStringListModel model({"one", "two"});
    QListView list;
    list.setModel(&model);
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&list);
    EXPECT_EQ(spoken->child(1)->text(QAccessible::Name), "two");
    heard.clear();

    model.setStringList({"three", "four", "five"});

    EXPECT_EQ(spoken->childCount(), 3);
    EXPECT_EQ(spoken->child(1)->text(QAccessible::Name), "four");
    const auto changes = std::count_if(heard.begin(), heard.end(), [](const Told& event) {
        return event.type == QAccessible::TableModelChanged;
    });
    EXPECT_EQ(changes, 1);
}

TEST_F(Refusals, AreToldEachThoughTheyAreAlike)
{
    for (int refusal = 0; refusal < 3; ++refusal) {
        heard.clear();
        field.sayWrong("Wrong password");
        EXPECT_EQ(field.accessibleDescription(), "Wrong password");
        EXPECT_TRUE(std::any_of(heard.begin(), heard.end(), [](const Told& event) {
            return event.type == QAccessible::DescriptionChanged;
        }));
    }
}

TEST_F(MaskedTextEvents, EndWithTheObject)
{
    masking.reset();
    EXPECT_EQ(QAccessible::installUpdateHandler(hear), hear);
}

TEST_F(MaskedTextEvents, StayInPlaceAfterEachEvent)
{
    field.setAccessibleName("Password");
    type(field, "secret");
    EXPECT_EQ(textsHeard(), marks(6));
    EXPECT_NE(QAccessible::installUpdateHandler(hear), hear);
}
