#include "platform/XmlConfigure.h"

#include "support/CapturedLog.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace {

using Node = SafePointer<XmlConfigureNode>;
using Item = SafePointer<XmlConfigureItem>;

constexpr char DOCUMENT[] = R"(<?xml version="1.0"?><!DOCTYPE any>
<!-- <a n="0"/> -->
<any>
    <a n="1"><?item n="9"?><item k="first"/>text<other/><item k="&#233;"/></a>
    <b/><a n="2"/>
    <v least="-2147483648" letters="12x" blank=" 12" plus="+1" big="2147483648" empty=""
       yes="yes" True="True" twice="1" twice="1"/>
</any>)";

class XmlConfigure : public testing::Test {
protected:
    XmlConfigure() { EXPECT_NE(m_Tool.open(m_Path, 1, OPEN_MODE_READ), 0); }

    template <typename Value> int get(const char* name, Value& out) {
        Node node;
        EXPECT_NE(m_Tool.getConfigNode("v", node), 0);
        return node->getProperty(name, out);
    }

    TempDir m_Dir;
    std::string m_Path = m_Dir.write("any.xml", DOCUMENT);
    XmlConfigureTool m_Tool;
};

TEST_F(XmlConfigure, FindsElementsInDocumentOrder) {
    Node node;
    ASSERT_NE(m_Tool.getConfigNode("a", node), 0);
    std::vector<Node> nodes{node};
    ASSERT_NE(m_Tool.getConfigNodeList("a", nodes), 0);
    std::vector<Item> items;
    ASSERT_NE(node->getItemList(items), 0);
    CapturedLog log;
    EXPECT_EQ(m_Tool.open(m_Path, 2, OPEN_MODE_READ), 0) << "there is only layout 1";
    EXPECT_EQ(log.take().size(), 1U);

    ASSERT_EQ(nodes.size(), 2U) << "what was found outlives the tool's document";
    int n = 0;
    EXPECT_NE(node->getProperty("n", n), 0);
    EXPECT_EQ(n, 1);
    EXPECT_NE(nodes[1]->getProperty("n", n), 0);
    EXPECT_EQ(n, 2);
    ASSERT_EQ(items.size(), 2U);
    std::string key;
    EXPECT_NE(items[1]->getProperty("k", key), 0);
    EXPECT_EQ(key, "\xC3\xA9");

    EXPECT_NE(node->getConfigNodeList("absent", nodes), 0);
    EXPECT_TRUE(nodes.empty());
    EXPECT_NE(node->getConfigNode("other", node), 0) << "a node may be replaced by its child";
    EXPECT_NE(node->getItemList(items), 0);
    EXPECT_TRUE(items.empty());
}

TEST_F(XmlConfigure, ConvertsWholeValuesOnly) {
    int number = 0;
    EXPECT_NE(get("least", number), 0);
    EXPECT_EQ(number, -2147483647 - 1);
    bool flag = true;
    std::string text;
    EXPECT_NE(get("empty", text), 0);

    number = 7;
    text = "before";
    CapturedLog log;
    for (const char* name : {"letters", "blank", "plus", "big", "empty", "twice"}) {
        EXPECT_EQ(get(name, number), 0) << name;
    }
    for (const char* name : {"yes", "True", "empty", "letters"}) {
        EXPECT_EQ(get(name, flag), 0) << name;
    }
    EXPECT_EQ(get("twice", text), 0);
    EXPECT_EQ(get("absent", number) + get("absent", flag) + get("absent", text), 0);
    Node node;
    EXPECT_EQ(m_Tool.getConfigNode("absent", node), 0);
    EXPECT_TRUE(node.isNull());
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(flag);
    EXPECT_EQ(text, "before");

    const std::vector<std::string> records = log.take();
    ASSERT_EQ(records.size(), 12U) << "one each, none for a property that is not there";
    EXPECT_EQ(records[0], "XmlConfigure: " + m_Path + ":6: v: attribute letters must be a whole " +
                              "number from -2147483648 to 2147483647, not \"12x\"");
    EXPECT_EQ(records[11], "XmlConfigure: " + m_Path + ":3: any has no element absent");
}

} // namespace
