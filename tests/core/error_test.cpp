#include "core/error.h"

#include "platform/platform.h"
#include "platform/userinterface.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

// Notes what is shown, and the sticky code while it is shown.
class BoxRecorder : public UserInterface {
public:
    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon) override
    {
        captions.emplace_back(caption);
        texts.emplace_back(text);
        buttonSets.push_back(buttons);
        codeWhileOpen = errorState.code;
        raiseError(raiseWhileOpen);
        return BoxAnswer::Ok;
    }
    bool askFile(FileQuestion&) override { return false; }
    void runDialog(DialogModel&) override {}
    void noteDocument(std::u16string_view) override {}
    void setTitle(std::u16string_view) override {}
    void showWaitCursor(bool) override {}

    std::vector<std::u16string> captions, texts;
    std::vector<BoxButtons> buttonSets;
    int codeWhileOpen = -1;
    int raiseWhileOpen = ErrorNone;
};

class Error : public testing::Test {
protected:
    Error() : former_(platform.userInterface)
    {
        platform.userInterface = &boxes;
        errorState = {};
    }
    ~Error() override
    {
        platform.userInterface = former_;
        errorState = {};
    }

    BoxRecorder boxes;

private:
    UserInterface* former_;
};

TEST_F(Error, standsUntilItIsCleared)
{
    EXPECT_FALSE(errorStands());
    raiseError(ErrorMemory);
    raiseError(ErrorCharacter);
    EXPECT_EQ(errorState.code, 15);
    EXPECT_TRUE(errorStands());
    clearError();
    EXPECT_EQ(errorState.code, 0);
    raiseError(ErrorCharacter);
    EXPECT_EQ(errorState.code, 2);
}

TEST_F(Error, beginsWithMessagesAllowed)
{
    EXPECT_EQ(ErrorState{}.code, 0);
    EXPECT_EQ(ErrorState{}.showMessages, 1);
}

TEST_F(Error, hasTheSystemsOwnWordsForEachCode)
{
    const struct {
        int code;
        const char16_t* text;
    } cases[] = {
        {0,  u"OK"                                                                            },
        {1,  u"Unexpected end of formula"                                                     },
        {2,  u"Unexpected character"                                                          },
        {3,  u"Numer out of bounds"                                                           },
        {4,  u"Unexpected token"                                                              },
        {5,  u"Expected name of column"                                                       },
        {6,  u"Invalid column name"                                                           },
        {7,  u"Row number is too big"                                                         },
        {8,  u"Row number must not be 0"                                                      },
        {9,  u"Row number expected"                                                           },
        {10, u"File creation error"                                                           },
        {11, u"File open error"                                                               },
        {12, u"File is not in Vorn format"                                                    },
        {13, u"File read error"                                                               },
        {14, u"File write error"                                                              },
        {15, u"Out of memory"                                                                 },
        {16, u"File delete error"                                                             },
        {17, u"Few arguments"                                                                 },
        {18, u"Too many arguments"                                                            },
        {19, u"\"(\" missing"                                                                 },
        {20, u"\")\" missing"                                                                 },
        {21, u"Vorn initialization error"                                                     },
        {22, u"Formula is too complex"                                                        },
        {23, u"Clipboard error"                                                               },
        {24, u"String must be terimtated by \""                                               },
        {25, u"Sheet name expected"                                                           },
        {26, u"\"!\" expected"                                                                },
        {27, u"Reference expected after \"!\" "                                               },
        {28, u"Redundant \")\""                                                               },
        {29, u"Unknown name"                                                                  },
        {30, u"A sheet with the name you specified already exists"                            },
        {31, u"Embedding selection out of bounds"                                             },
        {32, u"Invalid date/time"                                                             },
        {33, u"The file was created in the newer version of Vorn. Some data may be lost."     },
        {34, u"The file was created in the newer version of Vorn. It cannot be opened."       },
        {35, u"Not supported formula"                                                         },
        {36, u"The selection is to large"                                                     },
        {37, u"Please select the cells that contain the data and labels you want in the chart"},
        {38, u"File is password protected"                                                    },
        {39, u"No data were found. Select a cell within your data, and then try it again."    },
        {40, u"File open error. Vorn supports only documents created in Microsoft Excel 5.0, "
             u"95, 97 or 2000."                                                   },
        {41, u"Error no. 41"                                                                  },
        {99, u"Error no. 99"                                                                  },
        {-1, u"Error no. -1"                                                                  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(errorText(c.code), c.text) << c.code;
}

TEST_F(Error, isShownInABoxAndClearedBefore)
{
    raiseError(ErrorMemory);
    showError();
    ASSERT_EQ(boxes.texts.size(), 1U);
    EXPECT_EQ(boxes.captions[0], u"Vorn");
    EXPECT_EQ(boxes.texts[0], u"Out of memory");
    EXPECT_EQ(boxes.buttonSets[0], BoxButtons::Ok);
    EXPECT_EQ(boxes.codeWhileOpen, 0);
    EXPECT_EQ(errorState.code, 0);
}

TEST_F(Error, raisedWhileABoxIsOpenStandsAfterIt)
{
    boxes.raiseWhileOpen = ErrorFileRead;
    raiseError(ErrorMemory);
    showError();
    EXPECT_EQ(errorState.code, 13);
}

TEST_F(Error, isNotShownWhenThereIsNone)
{
    showError();
    EXPECT_TRUE(boxes.texts.empty());
}

TEST_F(Error, isKeptWhileMessagesAreOff)
{
    errorState.showMessages = 0;
    raiseError(ErrorMemory);
    showError();
    EXPECT_TRUE(boxes.texts.empty());
    EXPECT_EQ(errorState.code, 15);
    errorState.showMessages = 1;
    showError();
    EXPECT_EQ(boxes.texts.size(), 1U);
}

TEST_F(Error, withoutAMessageIsShownByNumber)
{
    raiseError(99);
    showError();
    ASSERT_EQ(boxes.texts.size(), 1U);
    EXPECT_EQ(boxes.texts[0], u"Error no. 99");
}

} // namespace
} // namespace vorn
