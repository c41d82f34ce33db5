#include "vyncore/console/CommandRegistry.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace {

using vyncore::UString;
using vyncore::console::Command;
using vyncore::console::CommandRegistry;

class EchoCommand : public Command {
public:
    using Command::Command;

    bool Execute(std::vector<UString> const& args, UString& output) override {
        for (UString const& arg : args) {
            if (arg == u"throw")
                throw std::runtime_error("thrown");
            output += u"<" + arg + u">";
        }
        return !args.empty();
    }
};

std::unique_ptr<Command> MakeEcho(std::string const& name, std::string const& help) {
    return std::make_unique<EchoCommand>(name, help);
}

class CommandRegistryTest : public testing::Test {
protected:
    CommandRegistryTest() {
        EXPECT_TRUE(mRegistry.RegisterCommand("test.Echo", "test.Echo - says it again", MakeEcho));
    }
    ~CommandRegistryTest() override { mRegistry.UnregisterCommand("test.Echo"); }

    CommandRegistry& mRegistry = CommandRegistry::Get();
};

TEST_F(CommandRegistryTest, ArgumentsAreSplitAtCommasAndKeepTheirBlanks) {
    struct {
        char16_t const* line;
        bool done;
        char16_t const* output;
    } const cases[] = {
        {u"test.Echo one", true, u"<one>"},
        {u"  test.Echo   /a folder/f,,two, three  ", true, u"</a folder/f><two>< three>"},
        {u"test.Echo ,one,", true, u"<one>"},
        {u"test.Echo", false, u""},
        {u"test.Echo ,,", false, u""},
        {u"test.Echo throw", false, u"test.Echo: thrown\n"},
        {u"test.Ech one", false, u"Unknown command: test.Ech\n"},
        {u"", false, u"Unknown command: \n"},
    };
    for (auto const& tried : cases) {
        UString output;
        EXPECT_EQ(mRegistry.Execute(tried.line, output), tried.done) << testing::PrintToString(tried.line);
        EXPECT_EQ(output, tried.output);
    }
}

TEST_F(CommandRegistryTest, ANameIsTakenUntilItIsUnregisteredAndNothingIsRegisteredWithoutACommand) {
    auto const makeNone = [](std::string const&, std::string const&) { return std::unique_ptr<Command>(); };
    EXPECT_FALSE(mRegistry.RegisterCommand("test.None", "", makeNone));
    EXPECT_FALSE(mRegistry.RegisterCommand("test.None", "", nullptr));
    EXPECT_FALSE(mRegistry.RegisterCommand("", "", MakeEcho));
    EXPECT_EQ(mRegistry.GetNames(), std::vector<std::string>{"test.Echo"});
    EXPECT_FALSE(mRegistry.RegisterCommand("test.Echo", "another", MakeEcho));
    EXPECT_EQ(mRegistry.GetHelp("test.Echo"), "test.Echo - says it again");
    std::unique_ptr<Command> const command = mRegistry.UnregisterCommand("test.Echo");
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->GetName(), "test.Echo");
    EXPECT_EQ(mRegistry.UnregisterCommand("test.Echo"), nullptr);
    EXPECT_EQ(mRegistry.GetNames(), std::vector<std::string>{});
    EXPECT_TRUE(mRegistry.RegisterCommand("test.Echo", "another", MakeEcho));
}

} // namespace
