
#include "catalogue/PlaylistTexts.h"
#include "operations/PropertiesFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(Properties, ADescriptionIsAskedForShownMarkedAndWritten)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(u"Für den Abend"_s);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("input title \" Beschreibung der Playliste\" text \"Geben Sie bitte eine Beschreibung für die "
              "Wiedergabeliste ein:\" default \"\" entered \"Für den Abend\"",
              boxes());
    EXPECT_EQ("Für den Abend", key(1, 'e'));
    EXPECT_EQ("Für den Abend", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());

    desktop.messages.enter(u"Anders"_s);
    root().mnuBeschriftung.Click();
    EXPECT_NE(std::string::npos, boxes().find("default \"Für den Abend\""));
}

TEST_F(Properties, WithoutACoverADescriptionLeadsToTheQuestionForOne)
{
    int clicks = 0;
    root().pCovers.Click = [&] { ++clicks; };
    const QString question = u"Möchten Sie zu dem Album ein CD-Cover hinzufügen ?   "_s;
    desktop.messages.enter(u"Text"_s);
    desktop.messages.answer(Answer::No, u" Beschreibung der Playliste"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(0, clicks);
    desktop.messages.take();
    desktop.messages.enter(u"Text"_s);
    desktop.messages.answer(Answer::Yes, u" Beschreibung der Playliste"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(1, clicks);
    EXPECT_NE(std::string::npos, boxes().find("icon question buttons yes-no"));
}

TEST_F(Properties, AnEmptyAnswerTakesADescriptionAwayAfterAQuestion)
{
    const QString question = u"Möchten Sie die Beschreibung der Playliste wirklich löschen ?   "_s;
    root().services.profiles.setValue(database(), u"Index"_s, u"1e"_s, u"Alt"_s);
    root().LSoundCaption.Caption = u"Alt"_s;
    root().LSoundCaption.Tag = u"1"_s;
    desktop.messages.enter({});
    desktop.messages.answer(Answer::No, u" Beschreibung entfernen"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("Alt", key(1, 'e'));
    EXPECT_EQ("Alt", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no"));

    desktop.messages.enter({});
    desktop.messages.answer(Answer::Yes, u" Beschreibung entfernen"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(-1, bytes(database()).indexOf("1e"));
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
}

TEST_F(Properties, AnEmptyAnswerToTheHintAsksNothingAndKeepsTheHint)
{
    ASSERT_TRUE(isHint(root().LSoundCaption.Caption));
    desktop.messages.enter({});
    root().LSoundCaption.Tag = u"1"_s;
    root().mnuBeschriftung.Click();
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
}

TEST_F(Properties, WithoutASelectedRowNoDescriptionIsAskedFor)
{
    catalogue().clearSelection();
    root().mnuBeschriftung.Click();
    catalogue().clear();
    root().mnuBeschriftung.Click();
    EXPECT_EQ("", boxes());
}

TEST_F(Properties, ADescriptionGoesNowhereWhenAnotherRowWasChosenMeanwhile)
{
    desktop.messages.script({Answer::Ok, u"Text"_s, {}, {}, [this] { catalogue().select(2); }});
    forgetCalls();
    root().mnuBeschriftung.Click();
    EXPECT_EQ("", actions());
}

TEST_F(Properties, ADescriptionGoesBehindItsQuestionWithoutTheLabelOfAnotherListThatWasOpenedMeanwhile)
{
    root().services.profiles.setValue(database(), u"Index"_s, u"1e"_s, u"Alt"_s);
    root().services.profiles.setValue(database(), u"Index"_s, u"3e"_s, u"Von der Dritten"_s);
    root().LSoundCaption.Caption = u"Alt"_s;
    root().LSoundCaption.Tag = u"1"_s;
    desktop.messages.enter({});
    desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { click(3); }});
    root().mnuBeschriftung.Click();
    EXPECT_EQ(-1, bytes(database()).indexOf("1e"));
    EXPECT_EQ("Von der Dritten", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());
    EXPECT_EQ("Von der Dritten", key(3, 'e'));
}

TEST_F(Properties, NoCoverIsChosenForAnotherListThatWasOpenedBehindTheQuestion)
{
    int clicks = 0;
    root().pCovers.Click = [&] { ++clicks; };
    desktop.messages.enter(u"Text"_s);
    desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { click(3); }});
    root().mnuBeschriftung.Click();
    EXPECT_EQ(0, clicks);
    EXPECT_EQ("Text", key(1, 'e'));
    EXPECT_EQ("", key(3, 'e'));
}

TEST_F(Properties, ThePencilAndADoubleClickOnTheHeadingAskForTheDescription)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(u"Eins"_s);
    root().pTrayicon.Click();
    EXPECT_EQ("Eins", key(1, 'e'));
    desktop.messages.enter(u"Zwei"_s);
    root().tBeschreibung.DblClick();
    EXPECT_EQ("Zwei", key(1, 'e'));
    root().tDateiname.Enabled = false;
    root().pTrayicon.Click();
    root().tBeschreibung.DblClick();
    EXPECT_EQ("Zwei", key(1, 'e'));
}

TEST_F(Properties, ALongDescriptionComesBackWith254Characters)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(QString(300, u'x'));
    root().mnuBeschriftung.Click();
    root().mnuEigenschaften.Click();
    EXPECT_EQ(254, form().tBeschreibung.Text.value().size());
}

} // namespace orvantine::fake
