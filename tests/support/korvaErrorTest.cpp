#include <gtest/gtest.h>

#include <string>

#include "support/korvaError.h"

using Kw::Mbr::Korva::korvaError;
using Kw::Mbr::Korva::korvaErrorIF;

namespace {

korvaErrorIF::Severity_Type SeverityFromNumber(int value) { return static_cast<korvaErrorIF::Severity_Type>(value); }

}  // namespace

TEST(KorvaErrorTest, DefaultTitlesAndUninitialisedTextAreFixed) {
    EXPECT_STREQ("Information", korvaError::DefaultTitle[0]);
    EXPECT_STREQ("Warning", korvaError::DefaultTitle[1]);
    EXPECT_STREQ("Error", korvaError::DefaultTitle[2]);
    EXPECT_STREQ("Internal", korvaError::DefaultTitle[3]);
    EXPECT_STREQ("Fatal", korvaError::DefaultTitle[4]);
    EXPECT_STREQ("Uninitialized error text", korvaError::UnitializedText);
}

TEST(KorvaErrorTest, SeverityNumbersAreFixed) {
    EXPECT_EQ(0, static_cast<int>(korvaErrorIF::Information));
    EXPECT_EQ(1, static_cast<int>(korvaErrorIF::Warning));
    EXPECT_EQ(2, static_cast<int>(korvaErrorIF::Error));
    EXPECT_EQ(3, static_cast<int>(korvaErrorIF::Internal));
    EXPECT_EQ(4, static_cast<int>(korvaErrorIF::Fatal));
    EXPECT_EQ(4u, sizeof(korvaErrorIF::Severity_Type));
}

TEST(KorvaErrorTest, DefaultConstructorIsUninitialisedError) {
    korvaError error;
    EXPECT_EQ(korvaErrorIF::Error, error.GetSeverity());
    EXPECT_STREQ("Uninitialized error text", error.GetErrorText());
    EXPECT_STREQ("", error.GetDetailedText());
    EXPECT_STREQ("Error", error.GetTitle());
}

TEST(KorvaErrorTest, SeverityConstructorKeepsValidSeverities) {
    for (int value = 0; value <= 4; ++value) {
        korvaError error(SeverityFromNumber(value));
        EXPECT_EQ(value, static_cast<int>(error.GetSeverity()));
        EXPECT_STREQ(korvaError::DefaultTitle[value], error.GetTitle());
        EXPECT_STREQ("Uninitialized error text", error.GetErrorText());
    }
}

TEST(KorvaErrorTest, OutOfRangeSeverityBecomesErrorInEveryConstructor) {
    korvaError seven(SeverityFromNumber(7));
    EXPECT_EQ(korvaErrorIF::Error, seven.GetSeverity());
    EXPECT_STREQ("Error", seven.GetTitle());

    korvaError negative(SeverityFromNumber(-1));
    EXPECT_EQ(korvaErrorIF::Error, negative.GetSeverity());

    korvaError textOnly("text", SeverityFromNumber(5));
    EXPECT_EQ(korvaErrorIF::Error, textOnly.GetSeverity());

    korvaError stringText(std::string("text"), SeverityFromNumber(-100));
    EXPECT_EQ(korvaErrorIF::Error, stringText.GetSeverity());

    korvaError titled("title", "text", SeverityFromNumber(99));
    EXPECT_EQ(korvaErrorIF::Error, titled.GetSeverity());

    korvaError stringTitled(std::string("title"), std::string("text"), SeverityFromNumber(5));
    EXPECT_EQ(korvaErrorIF::Error, stringTitled.GetSeverity());
}

TEST(KorvaErrorTest, SetSeverityAppliesTheSameRule) {
    korvaError error(korvaErrorIF::Warning);
    error.SetSeverity(korvaErrorIF::Fatal);
    EXPECT_EQ(korvaErrorIF::Fatal, error.GetSeverity());
    error.SetSeverity(SeverityFromNumber(5));
    EXPECT_EQ(korvaErrorIF::Error, error.GetSeverity());
    error.SetSeverity(SeverityFromNumber(-3));
    EXPECT_EQ(korvaErrorIF::Error, error.GetSeverity());
    error.SetSeverity(korvaErrorIF::Information);
    EXPECT_EQ(korvaErrorIF::Information, error.GetSeverity());
}

TEST(KorvaErrorTest, TextConstructorsStoreTextAndSeverity) {
    korvaError fromChars("first", korvaErrorIF::Internal);
    EXPECT_STREQ("first", fromChars.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Internal, fromChars.GetSeverity());

    korvaError fromString(std::string("second"), korvaErrorIF::Information);
    EXPECT_STREQ("second", fromString.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Information, fromString.GetSeverity());
}

TEST(KorvaErrorTest, NullTextInConstructorLeavesTextEmpty) {
    korvaError error(static_cast<const char*>(nullptr), korvaErrorIF::Warning);
    EXPECT_STREQ("", error.GetErrorText());
    EXPECT_STREQ("Warning", error.GetTitle());
}

TEST(KorvaErrorTest, TitleConstructorsStoreAllThree) {
    korvaError fromChars("My title", "my text", korvaErrorIF::Fatal);
    EXPECT_STREQ("My title", fromChars.GetTitle());
    EXPECT_STREQ("my text", fromChars.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Fatal, fromChars.GetSeverity());

    korvaError fromStrings(std::string("T"), std::string("X"), korvaErrorIF::Warning);
    EXPECT_STREQ("T", fromStrings.GetTitle());
    EXPECT_STREQ("X", fromStrings.GetErrorText());
}

TEST(KorvaErrorTest, NullTitleAndTextInConstructorLeaveFieldsEmpty) {
    korvaError error(nullptr, nullptr, korvaErrorIF::Internal);
    EXPECT_STREQ("", error.GetErrorText());
    EXPECT_STREQ("Internal", error.GetTitle());  // empty title falls back to the default

    korvaError titleOnly("Only title", nullptr, korvaErrorIF::Internal);
    EXPECT_STREQ("Only title", titleOnly.GetTitle());
    EXPECT_STREQ("", titleOnly.GetErrorText());
}

TEST(KorvaErrorTest, EmptyStringTitleUsesDefault) {
    korvaError error(std::string(), std::string("text"), korvaErrorIF::Information);
    EXPECT_STREQ("Information", error.GetTitle());
}

TEST(KorvaErrorTest, DefaultTitleIsFixedAtFirstGetTitle) {
    korvaError error("any text", korvaErrorIF::Warning);
    EXPECT_STREQ("Warning", error.GetTitle());
    error.SetSeverity(korvaErrorIF::Fatal);
    EXPECT_EQ(korvaErrorIF::Fatal, error.GetSeverity());
    EXPECT_STREQ("Warning", error.GetTitle());
}

TEST(KorvaErrorTest, SeverityChangeBeforeFirstGetTitleChangesDefault) {
    korvaError error("any text", korvaErrorIF::Warning);
    error.SetSeverity(korvaErrorIF::Fatal);
    EXPECT_STREQ("Fatal", error.GetTitle());
}

TEST(KorvaErrorTest, SetTitleReplacesAndNullIsIgnored) {
    korvaError error("text", korvaErrorIF::Error);
    error.SetTitle("First");
    EXPECT_STREQ("First", error.GetTitle());
    error.SetTitle(static_cast<const char*>(nullptr));
    EXPECT_STREQ("First", error.GetTitle());
    error.SetTitle(std::string("Second"));
    EXPECT_STREQ("Second", error.GetTitle());
}

TEST(KorvaErrorTest, SetErrorTextReplacesWithoutTouchingDetails) {
    korvaError error("one", korvaErrorIF::Error);
    error.AddDetailedInfo("detail");
    error.SetErrorText("two");
    EXPECT_STREQ("two", error.GetErrorText());
    error.SetErrorText(std::string("three"));
    EXPECT_STREQ("three", error.GetErrorText());
    EXPECT_STREQ("detail", error.GetDetailedText());
}

TEST(KorvaErrorTest, SetErrorTextNullLeavesTextAsItWas) {
    korvaError error("kept", korvaErrorIF::Error);
    error.SetErrorText(static_cast<const char*>(nullptr));
    EXPECT_STREQ("kept", error.GetErrorText());
}

TEST(KorvaErrorTest, PushTextMovesCurrentTextIntoDetails) {
    korvaError error("T1", korvaErrorIF::Error);
    error.PushText("T2");
    EXPECT_STREQ("T2", error.GetErrorText());
    EXPECT_STREQ("T1", error.GetDetailedText());
}

TEST(KorvaErrorTest, PushTextStringFormAndLayering) {
    korvaError error("inner", korvaErrorIF::Error);
    error.PushText(std::string("middle"));
    error.PushText("outer");
    EXPECT_STREQ("outer", error.GetErrorText());
    EXPECT_STREQ("inner\nmiddle", error.GetDetailedText());
}

TEST(KorvaErrorTest, PushTextNullIsIgnored) {
    korvaError error("T1", korvaErrorIF::Error);
    error.PushText(static_cast<const char*>(nullptr));
    EXPECT_STREQ("T1", error.GetErrorText());
    EXPECT_STREQ("", error.GetDetailedText());
}

TEST(KorvaErrorTest, PushTextOnUninitialisedErrorKeepsTheUninitialisedText) {
    korvaError error;
    error.PushText("real");
    EXPECT_STREQ("Uninitialized error text", error.GetDetailedText());
}

TEST(KorvaErrorTest, DetailsJoinWithLineFeeds) {
    korvaError error("text", korvaErrorIF::Error);
    error.AddDetailedInfo("A");
    error.AddDetailedInfo(std::string("B"));
    EXPECT_STREQ("A\nB", error.GetDetailedText());
}

TEST(KorvaErrorTest, DetailedTextIsBuiltOnlyOnce) {
    korvaError error("text", korvaErrorIF::Error);
    error.AddDetailedInfo("A");
    error.AddDetailedInfo("B");
    EXPECT_STREQ("A\nB", error.GetDetailedText());
    error.AddDetailedInfo("C");
    error.PushText("newer");
    EXPECT_STREQ("A\nB", error.GetDetailedText());
}

TEST(KorvaErrorTest, DetailedTextIsBuiltLaterWhenFirstRequestWasEmpty) {
    korvaError error("text", korvaErrorIF::Error);
    EXPECT_STREQ("", error.GetDetailedText());
    error.AddDetailedInfo("late");
    EXPECT_STREQ("late", error.GetDetailedText());
}

TEST(KorvaErrorTest, EmptyDetailLinesStillGetSeparators) {
    korvaError error("text", korvaErrorIF::Error);
    error.AddDetailedInfo("");
    error.AddDetailedInfo("x");
    EXPECT_STREQ("\nx", error.GetDetailedText());
}

TEST(KorvaErrorTest, AddDetailedInfoNullIsIgnored) {
    korvaError error("text", korvaErrorIF::Error);
    error.AddDetailedInfo(static_cast<const char*>(nullptr));
    error.AddDetailedInfo("only");
    EXPECT_STREQ("only", error.GetDetailedText());
}

TEST(KorvaErrorTest, CopyConstructorCopiesTitleTextSeverityAndDetails) {
    korvaError original("Title", "text", korvaErrorIF::Internal);
    original.AddDetailedInfo("d1");
    original.AddDetailedInfo("d2");
    korvaError copy(original);
    EXPECT_STREQ("Title", copy.GetTitle());
    EXPECT_STREQ("text", copy.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Internal, copy.GetSeverity());
    EXPECT_STREQ("d1\nd2", copy.GetDetailedText());
}

TEST(KorvaErrorTest, CopyOfEmptyTitleLeavesTitleForTheDefault) {
    korvaError original("text", korvaErrorIF::Fatal);
    korvaError copy(original);
    EXPECT_STREQ("Fatal", copy.GetTitle());
}

TEST(KorvaErrorTest, AssignmentEmptiesTargetFieldsBeforeCopying) {
    korvaError target("Old title", "old text", korvaErrorIF::Warning);
    target.AddDetailedInfo("old detail");
    korvaError source(nullptr, "", korvaErrorIF::Information);
    source.AddDetailedInfo("new detail");
    target = source;
    EXPECT_STREQ("", target.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Information, target.GetSeverity());
    EXPECT_STREQ("Information", target.GetTitle());
    EXPECT_STREQ("new detail", target.GetDetailedText());
}

TEST(KorvaErrorTest, AssignmentKeepsTheTargetsDetailedTextCache) {
    korvaError target("text", korvaErrorIF::Error);
    target.AddDetailedInfo("cached");
    EXPECT_STREQ("cached", target.GetDetailedText());

    korvaError source("other", korvaErrorIF::Error);
    source.AddDetailedInfo("fresh");
    target = source;
    EXPECT_STREQ("cached", target.GetDetailedText());
    EXPECT_STREQ("other", target.GetErrorText());
}

TEST(KorvaErrorTest, CopyDoesNotCarryTheSourcesCache) {
    korvaError source("text", korvaErrorIF::Error);
    source.AddDetailedInfo("a");
    EXPECT_STREQ("a", source.GetDetailedText());
    source.AddDetailedInfo("b");  // not in the source's cache any more
    korvaError copy(source);
    EXPECT_STREQ("a\nb", copy.GetDetailedText());
    EXPECT_STREQ("a", source.GetDetailedText());
}

TEST(KorvaErrorTest, SelfAssignmentKeepsEverything) {
    korvaError error("Title", "text", korvaErrorIF::Warning);
    error.AddDetailedInfo("d");
    korvaError& alias = error;
    error = alias;
    EXPECT_STREQ("Title", error.GetTitle());
    EXPECT_STREQ("text", error.GetErrorText());
    EXPECT_STREQ("d", error.GetDetailedText());
}

TEST(KorvaErrorTest, DeleteDoesNothing) {
    korvaError error("text", korvaErrorIF::Warning);
    error.Delete();
    EXPECT_STREQ("text", error.GetErrorText());
    EXPECT_EQ(korvaErrorIF::Warning, error.GetSeverity());
}

TEST(KorvaErrorTest, ThrownAndCaughtByValueThroughTheInterface) {
    try {
        korvaError error("parse failed", korvaErrorIF::Internal);
        error.PushText("while opening");
        throw error;
    } catch (const korvaError& thrown) {
        korvaError caught(thrown);
        korvaErrorIF& asInterface = caught;
        EXPECT_STREQ("while opening", asInterface.GetErrorText());
        EXPECT_STREQ("parse failed", asInterface.GetDetailedText());
        EXPECT_STREQ("Internal", asInterface.GetTitle());
        EXPECT_EQ(korvaErrorIF::Internal, asInterface.GetSeverity());
        return;
    }
    FAIL() << "the error was not caught";
}
