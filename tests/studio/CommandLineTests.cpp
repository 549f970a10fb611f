// What the command line of the Studio asks for.
#include "tools/studio/model/CommandLine.h"

#include <gtest/gtest.h>

using studio::CommandLine;
using studio::ReadCommandLine;
using Fault = studio::CommandLine::Fault;

TEST(StudioCommandLine, TakesAnyNumberOfFiles)
{
    const CommandLine line = ReadCommandLine({L"a.qel", L"b c.qel"});
    EXPECT_EQ((std::vector<std::wstring>{L"a.qel", L"b c.qel"}), line.files);
    EXPECT_FALSE(line.bStandardInput);
    EXPECT_EQ(0U, line.nPort);
    EXPECT_EQ(Fault::None, line.fault);
}

TEST(StudioCommandLine, DashIsStandardInput)
{
    const CommandLine line = ReadCommandLine({L"a.qel", L"-"});
    EXPECT_EQ(std::vector<std::wstring>{L"a.qel"}, line.files);
    EXPECT_TRUE(line.bStandardInput);
}

TEST(StudioCommandLine, ListensOnAPortOfThisMachineUnlessTold)
{
    const CommandLine line = ReadCommandLine({L"--listen", L"1883"});
    EXPECT_EQ(1883U, line.nPort);
    EXPECT_EQ(L"", line.host);
    EXPECT_TRUE(line.files.empty());
    const CommandLine told = ReadCommandLine({L"--listen=0.0.0.0:65535"});
    EXPECT_EQ(65535U, told.nPort);
    EXPECT_EQ(L"0.0.0.0", told.host);
}

TEST(StudioCommandLine, AfterTwoDashesAllAreFiles)
{
    const CommandLine line = ReadCommandLine({L"--", L"-", L"--listen"});
    EXPECT_EQ((std::vector<std::wstring>{L"-", L"--listen"}), line.files);
    EXPECT_FALSE(line.bStandardInput);
}

TEST(StudioCommandLine, NamesTheWordThatIsAtFault)
{
    const struct {
        std::vector<std::wstring> words;
        Fault fault;
        std::wstring wrong;
    } cases[] = {{{L"--lisen", L"1"}, Fault::Unknown, L"--lisen"},
                 {{L"-x"}, Fault::Unknown, L"-x"},
                 {{L"--listen"}, Fault::PortMissing, L"--listen"},
                 {{L"--listen", L"0"}, Fault::PortWrong, L"0"},
                 {{L"--listen", L"65536"}, Fault::PortWrong, L"65536"},
                 {{L"--listen", L"12a"}, Fault::PortWrong, L"12a"},
                 {{L"--listen="}, Fault::PortWrong, L""},
                 {{L"--listen", L"1", L"--listen", L"2"}, Fault::Twice, L"--listen"},
                 {{L"-x", L"-y"}, Fault::Unknown, L"-x"}};
    for (const auto& wrong : cases) {
        const CommandLine line = ReadCommandLine(wrong.words);
        EXPECT_EQ(wrong.fault, line.fault);
        EXPECT_EQ(wrong.wrong, line.wrong);
    }
}
