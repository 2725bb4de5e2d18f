#include "shells/linux/views/kit/mnemonics.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QWidget>

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr auto localizable = style::Text::Lookup::localizable;
constexpr style::Text title{"Title", localizable};
constexpr style::Text type{"Type", localizable};
constexpr style::Text dots{"…", localizable};
constexpr style::Text tie{"Tie", localizable};
constexpr style::Text tee{"Tee", localizable};

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
    const Mnemonics mnemonics({title, type, tie, tee, dots}, form);
    EXPECT_EQ(mnemonics.keysOf(title), QKeySequence(Qt::ALT | Qt::Key_T));
    EXPECT_EQ(mnemonics.keysOf(type), QKeySequence(Qt::ALT | Qt::Key_Y));
    EXPECT_EQ(mnemonics.keysOf(tie), QKeySequence(Qt::ALT | Qt::Key_I));
    EXPECT_EQ(mnemonics.keysOf(tee), QKeySequence(Qt::ALT | Qt::Key_E));
    EXPECT_TRUE(mnemonics.keysOf(dots).isEmpty());
    EXPECT_TRUE(mnemonics.keysOf({"unknown"}).isEmpty());
}

TEST(MnemonicsTest, LettersComeFromTheTranslationOrWhereItHasNoneFromTheEnglish) {
    const Dictionary dictionary({{QStringLiteral("Title"), QStringLiteral("Überschrift")},
                                 {QStringLiteral("Type"), QString::fromUtf8("種類")},
                                 {QStringLiteral("Tie"), QString::fromUtf8("связь")}});
    QWidget form;
    const Mnemonics mnemonics({title, type, tie}, form);
    EXPECT_EQ(mnemonics.keysOf(title), QKeySequence(Qt::ALT | Qt::Key_Udiaeresis));
    EXPECT_EQ(mnemonics.keysOf(type), QKeySequence(Qt::ALT | Qt::Key_T));
    EXPECT_EQ(mnemonics.keysOf(tie), QKeySequence(Qt::ALT | static_cast<Qt::Key>(0x421)));
}

} // namespace
} // namespace kestrel::linux_shell
