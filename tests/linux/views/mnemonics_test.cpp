#include "shells/linux/views/kit/mnemonics.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QWidget>

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr auto titleText = style::Text::localizable("Title");
constexpr auto typeText = style::Text::localizable("Type");
constexpr auto dotsText = style::Text::localizable("…");
constexpr auto tieText = style::Text::localizable("Tie");
constexpr auto teeText = style::Text::localizable("Tee");

class Dictionary : public QTranslator {
  public:
    explicit Dictionary(std::map<QString, QString> words) : words_(std::move(words)) {
        QCoreApplication::installTranslator(this);
    }
    QString translate(const char* /*context*/, const char* key, const char* /*disambiguation*/,
                      int /*n*/) const override {
        const auto found = words_.find(QString::fromUtf8(key));
        return found == words_.end() ? QString() : found->second;
    }
    bool isEmpty() const override { return false; }

  private:
    std::map<QString, QString> words_;
};

TEST(MnemonicsTest, EachTextHasItsFirstLetterThatIsFree) {
    QWidget form;
    const Mnemonics mnemonics({titleText, typeText, tieText, teeText, dotsText}, form);
    EXPECT_EQ(mnemonics.keysOf(titleText), QKeySequence(Qt::ALT | Qt::Key_T));
    EXPECT_EQ(mnemonics.keysOf(typeText), QKeySequence(Qt::ALT | Qt::Key_Y));
    EXPECT_EQ(mnemonics.keysOf(tieText), QKeySequence(Qt::ALT | Qt::Key_I));
    EXPECT_EQ(mnemonics.keysOf(teeText), QKeySequence(Qt::ALT | Qt::Key_E));
    EXPECT_TRUE(mnemonics.keysOf(dotsText).isEmpty());
    EXPECT_TRUE(mnemonics.keysOf({"unknown"}).isEmpty());
}

TEST(MnemonicsTest, LettersComeFromTheTranslationOrWhereItHasNoneFromTheEnglish) {
    const Dictionary dictionary({{QStringLiteral("Title"), QStringLiteral("Überschrift")},
                                 {QStringLiteral("Type"), QString::fromUtf8("種類")},
                                 {QStringLiteral("Tie"), QString::fromUtf8("связь")}});
    QWidget form;
    const Mnemonics mnemonics({titleText, typeText, tieText}, form);
    EXPECT_EQ(mnemonics.keysOf(titleText), QKeySequence(Qt::ALT | Qt::Key_Udiaeresis));
    EXPECT_EQ(mnemonics.keysOf(typeText), QKeySequence(Qt::ALT | Qt::Key_T));
    EXPECT_EQ(mnemonics.keysOf(tieText), QKeySequence(Qt::ALT | static_cast<Qt::Key>(0x421)));
}

} // namespace
} // namespace kestrel::linux_shell
