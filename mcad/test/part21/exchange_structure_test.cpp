// The index of exchange structures: instances by number and type, who refers to whom, and what is passed over.
#include <gtest/gtest.h>

#include "part21/exchange_structure.h"

namespace zeq::part21 {
namespace {

const std::string head = "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AP242'));\nENDSEC;\nDATA;\n";
const std::string end = "ENDSEC;\nEND-ISO-10303-21;\n";

using Numbers = std::vector<std::uint64_t>;

Numbers numbersOf(const std::vector<Instance>& instances) {
    Numbers numbers;
    for (const Instance& instance : instances) numbers.push_back(instance.number());
    return numbers;
}

TEST(ExchangeStructure, IsWrittenWithoutInstancesAndReferencesToThem) {
    const std::string kept = "#11=A('#2',(#7),(#8));";
    const ExchangeStructure file(head + kept +
                                 "#2=B(/*#9*/);#3=(C((#2,#7))D((#7,#2 , #4),(#2)));\n #4 = E(';');#7=F();"
                                 "/*#4*/#8=G((#8,\n#4/*,*/));" +
                                 end);
    EXPECT_EQ(file.textWithout({file[4], file[2]}),
              head + kept + "#3=(C((#7))D((#7),()));\n #7=F();/*#4*/#8=G((#8/*,*/));" + end);
    const ExchangeStructure lists(head +
                                  "#1=A(1,2,3,4,5,6,7,8,9,(),((1,2),(1,2,3,4,5,6,7,8,'(9,',(10,(11)),'),'),"
                                  "(1,2,3,4,5,6,7,8/*,*/,(9),10)));" +
                                  kept + end);
    EXPECT_EQ(lists.textWithout({}, {lists[1]}),
              head + "#1=A(1,2,3,4,5,6,7,8,9,(),((1,2),(1,2,3,4,5,6,7,8),(1,2,3,4,5,6,7,8/*,*/)));" + kept +
                  end);
    EXPECT_EQ(file[2].raw(), "B(/*#9*/)");
    EXPECT_EQ(file[2].userCount(), 3);
    EXPECT_EQ(file[9].userCount(), 0);
}

TEST(ExchangeStructure, FindsInstancesByNumberAndType) {
    const ExchangeStructure file(head +
                                 "#7 = POINT('a',(1.,2.));\n"
                                 "/* #8=POINT(); */ #3=LINE( 'it''s #9; so' , #7,#7,(LABEL(#12)) )\n;"
                                 "#12=(B_LINE(2)LINE('x',#3,#99)EMPTY());#5=!OWN(#5);" +
                                 end);
    EXPECT_TRUE(file.problems().empty());
    EXPECT_EQ(file.size(), 4);
    EXPECT_EQ(file.largestNumber(), 12);
    EXPECT_EQ(numbersOf(file.all()), (Numbers{7, 3, 12, 5}));
    EXPECT_EQ(numbersOf(file.all("LINE")), (Numbers{3, 12}));
    EXPECT_EQ(file.count("POINT"), 1);
    EXPECT_EQ(file.count("CIRCLE"), 0);
    EXPECT_EQ(file.types(), (std::vector<std::string_view>{"POINT", "LINE", "B_LINE", "EMPTY", "!OWN"}));
    EXPECT_EQ(file.header("FILE_SCHEMA")[0].items()[0].text(), L"AP242");
    EXPECT_TRUE(file.header("FILE_NAME").empty());

    const Instance line = file[3], complex = file[12];
    EXPECT_EQ(line.type(), "LINE");
    EXPECT_EQ(line.parameters()[0].text(), L"it's #9; so");
    EXPECT_EQ(file[line.parameters()[1]], file[7]);
    EXPECT_EQ(numbersOf(line.references()), (Numbers{7, 7, 12}));
    EXPECT_EQ(numbersOf(file[7].users()), (Numbers{3}));
    EXPECT_EQ(numbersOf(line.users("EMPTY")), (Numbers{12}));
    EXPECT_EQ(numbersOf(file[5].users()), (Numbers{5}));
    EXPECT_LT(file[7], line); // in the order of the file

    EXPECT_TRUE(complex.isComplex());
    EXPECT_FALSE(line.isComplex());
    EXPECT_EQ(complex.types(), (std::vector<std::string_view>{"B_LINE", "LINE", "EMPTY"}));
    EXPECT_EQ(complex.parameters("LINE")[0].text(), L"x");
    EXPECT_TRUE(complex.parameters("EMPTY").empty());
    EXPECT_TRUE(complex.parameters("POINT").empty());
    EXPECT_EQ(complex.parameters()[0].number(), 2);

    const Instance none = file[99];
    EXPECT_FALSE(none);
    EXPECT_EQ(none.number(), 0);
    EXPECT_EQ(none.type(), "");
    EXPECT_FALSE(none.is("LINE") || none.isComplex());
    EXPECT_TRUE(none.types().empty() && none.parameters().empty() && none.references().empty() &&
                none.users().empty());
}

TEST(ExchangeStructure, PassesOverWhatIsDamaged) {
    struct Case {
        std::string text;
        Numbers numbers;
        std::vector<std::string> problems;
    };
    std::string manyTypes;
    for (int i = 0; i < 101; ++i) manyTypes += "A()";
    const Case cases[]{
        {head + "#1=A();\n#1=B();\n#2=A();\n" + end,
         {1, 2},
         {"line 7: the number is that of another instance"}},
        {head + "#1=A();\n#=A();\n#2=A();\n" + end, {1, 2}, {"line 7: the instance has no number"}},
        {head + "#1=A();\n#3 A();\n#2=A();\n" + end,
         {1, 2},
         {"line 7: there is no equals sign behind the number"}},
        {head + "#3=('a');\n#2=A();\n" + end, {2}, {"line 6: the instance has no type"}},
        {head + "#1=A();\nB();\n#2=A();\n" + end, {1, 2}, {"line 7: what stands here is no instance"}},
        {head + "#1=A();\n#2=A('never ends);\n" + end,
         {1},
         {"line 7: the instance does not end", "line 10: the file ends before its data section does"}},
        {head + "#1=A();\n/* never ends", {1}, {"line 7: the file ends before its data section does"}},
        {head + "#99999999999999999999999=A();\n#2=A();\n" + end,
         {2},
         {"line 6: the instance has no number"}},
        {head + "#0=A();\n#2=A($,*,'');\n" + end, {2}, {"line 6: the instance has no number"}},
        {head + "#1=A(#5\n#2 = A();\n" + end, {2}, {"line 6: the instance does not end"}},
        {head + "#1=A('no end,#5);\n#2=A('b''b');\n#3=A('wrapped\n#4 is no instance');\n" + end,
         {2, 3},
         {"line 6: the instance does not end"}},
        {head + "#1=(" + manyTypes + ");\n#2=A();\n" + end,
         {2},
         {"line 6: the instance has more than 100 types"}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        const ExchangeStructure file(each.text);
        EXPECT_EQ(numbersOf(file.all()), each.numbers);
        EXPECT_EQ(file.problems(), each.problems);
    }
    std::string worthless = head;
    for (int i = 0; i < 500; ++i) worthless += "#=A();\n";
    EXPECT_EQ(ExchangeStructure(worthless + end).problems().size(), 100);
    for (const std::string text : {"", "solid", "ISO-10303-2", "{\"a\":1}"})
        EXPECT_THROW(ExchangeStructure{text}, ReadError) << text;
}

TEST(ExchangeStructure, IsReadToWhereItIsCut) {
    const std::string whole =
        head + "#1=A('x''y',#2);\n/* c */#2=(B((1,2))C(\"0A\",.T.));\n#3=D(*,$);\n" + end;
    std::size_t before = 0;
    for (std::size_t length = 14; length <= whole.size(); ++length) {
        const ExchangeStructure file(whole.substr(0, length));
        EXPECT_GE(file.size(), before); // instances come one by one, and none goes
        EXPECT_LE(file.size(), before + 1);
        before = file.size();
        const bool isEnded = length >= whole.find("ENDSEC;\nEND") + 6;
        EXPECT_EQ(file.problems().empty(), isEnded) << length;
        for (const Instance& instance : file.all())
            for (const std::string_view type : instance.types())
                for (const Value& value : instance.parameters(type)) EXPECT_NE(value.kind(), Kind::damaged);
    }
    EXPECT_EQ(before, 3);
}

TEST(ExchangeStructure, HasAllDataSections) {
    const ExchangeStructure file(head + "#1=A();ENDSEC;DATA('second',('AP242'));#2=A();" + end + "#3=A();");
    EXPECT_EQ(numbersOf(file.all("A")), (Numbers{1, 2}));
}

TEST(ExchangeStructure, OfManyReferencesAndDeepListsIsIndexedInOnePass) {
    std::string text = head + "#1=A(" + std::string(1000000, '(') + ");\n";
    for (int i = 2; i < 100000; ++i) text += "#" + std::to_string(i) + "=A(#1);\n";
    const ExchangeStructure file(text + end);
    EXPECT_EQ(file[1].users().size(), 99998);
    std::size_t depth = 0;
    for (Value value = file[1].parameters()[0]; depth < 10; ++depth) value = value.items()[0];
    EXPECT_EQ(depth, 10);
}

} // namespace
} // namespace zeq::part21
