#include <gtest/gtest.h>

#include <string>

#include "vextools/structures.h"

namespace {

std::string Rewrite(const std::string& text) {
  CLstStructures list;
  if (!list.BuildFromString(text)) return "<refused>";
  std::string out = "stale";
  list.MakeString(out);
  return out;
}

TEST(Structures, MakeStringWritesTheTree) {
  CLstStructures list;
  std::string out = "stale";
  list.MakeString(out);
  EXPECT_EQ(out, "");

  CStructure* point = list.Add("Point");
  point->AddMember(12);
  point->AddMember(3.5);
  point->AddMember("abc");
  CStructure* frame = list.Add("Frame");
  frame->AddMember("Point", true)->Structure().AddMember(1);
  list.MakeString(out);
  EXPECT_EQ(out, "Point{12,3.5,\"abc\"};Frame{Point{1}}");

  // No escaping, negative numbers and empty structures are written as they are.
  CLstStructures odd;
  odd.Add("A")->AddMember("say \"hi\"\\");
  odd.Item(0u)->AddMember(-5);
  odd.Add("Empty");
  odd.MakeString(out);
  EXPECT_EQ(out, "A{\"say \"hi\"\\\",-5};Empty{}");
}

TEST(Structures, ScalarTexts) {
  EXPECT_STREQ(CMember(2.5).String(), "2.5");
  EXPECT_STREQ(CMember(3.0).String(), "3");
  EXPECT_STREQ(CMember(1.05).String(), "1");  // every 0 after the point goes, and the text is cut there
  EXPECT_STREQ(CMember(10.25).String(), "10.25");
  EXPECT_STREQ(CMember(-0.5).String(), "-0.5");
  EXPECT_STREQ(CMember(1e20).String(), "100000000000000000000");
  EXPECT_STREQ(CMember(std::int32_t{-2147483647 - 1}).String(), "-2147483648");
  EXPECT_STREQ(CMember(true).String(), "true");
  EXPECT_STREQ(CMember(false).String(), "false");
}

TEST(Structures, TypedAccess) {
  CMember integer(std::int32_t{42});
  std::int32_t i = 0;
  double d = 0;
  bool b = true;
  std::string s;
  CStructure* st = nullptr;
  EXPECT_TRUE(integer.GetInteger(i));
  EXPECT_EQ(i, 42);
  EXPECT_TRUE(integer.GetReal(d));  // an integer reads as a real too
  EXPECT_EQ(d, 42.0);
  EXPECT_FALSE(integer.GetBoolean(b));
  EXPECT_FALSE(integer.GetString(s));
  EXPECT_FALSE(integer.GetStructure(st));
  EXPECT_TRUE(integer.IsNumeric());

  CMember real(2.25);
  EXPECT_FALSE(real.GetInteger(i));
  EXPECT_EQ(real.Integer(), 0);
  EXPECT_EQ(real.Real(), 2.25);

  CMember text("a\tb\nc\rd");
  EXPECT_TRUE(text.GetString(s));
  EXPECT_EQ(s, "a\\tb\\nc\\rd");
  EXPECT_STREQ(text.String(), "a\tb\nc\rd");
  EXPECT_EQ(text.Real(), 0.0);

  // SetType changes the tag only: the text is then read with the new type's rules.
  CMember big("99999999999");
  big.SetType(MT_INTEGER);
  EXPECT_EQ(big.Integer(), 2147483647);  // a 32-bit long saturates
  CMember yes("true");
  EXPECT_FALSE(yes.Boolean());
  yes.SetType(MT_BOOLEAN);
  EXPECT_TRUE(yes.Boolean());
  CMember lost("x");
  lost.SetType(MT_STRUCTURE);
  EXPECT_TRUE(lost.GetStructure(st));
  EXPECT_EQ(st, nullptr);
  EXPECT_EQ(lost.Structure().GetMembersCount(), 0u);
}

TEST(Structures, MembersAndLookup) {
  CStructure s("S");
  s.AddMember("Inner", true);
  s.AddMember("Inner", false);
  CMember* second = s.AddMember("Inner", true);
  EXPECT_EQ(s.SearchStructure("Inner"), s.ItemMember(0));
  EXPECT_EQ(s.SearchStructure("inner"), nullptr);
  EXPECT_EQ(s.SearchStructure(""), nullptr);
  EXPECT_EQ(s.SearchStructure(nullptr), nullptr);
  s.RemoveMember(0);
  s.RemoveMember(7);
  EXPECT_EQ(s.GetMembersCount(), 2u);
  EXPECT_EQ(s.SearchStructure("Inner"), second);
  EXPECT_EQ(s.ItemMember(2), nullptr);
  s.ClearMembers();
  EXPECT_EQ(s.GetMembersCount(), 0u);

  CLstStructures list;
  list.Add("A");
  CStructure* b = list.Add("B");
  list.Add("A");
  EXPECT_EQ(list.Item("B"), b);
  EXPECT_EQ(list.Item("A"), list.Item(0u));
  EXPECT_EQ(list.Item(static_cast<const char*>(nullptr)), nullptr);
  EXPECT_EQ(list.Item(3u), nullptr);
  list.Remove(0);
  EXPECT_EQ(list.Item(0u), b);
}

TEST(Structures, AcceptedTexts) {
  CLstStructures list;
  ASSERT_TRUE(list.BuildFromString("A{1,2.50,\"x y\"}"));
  CStructure* a = list.Item(0u);
  ASSERT_EQ(a->GetMembersCount(), 3u);
  EXPECT_EQ(a->ItemMember(0)->GetType(), MT_INTEGER);
  EXPECT_EQ(a->ItemMember(0)->Integer(), 1);
  EXPECT_EQ(a->ItemMember(1)->GetType(), MT_REAL);
  EXPECT_STREQ(a->ItemMember(1)->String(), "2.5");
  EXPECT_EQ(a->ItemMember(2)->GetType(), MT_STRING);
  EXPECT_STREQ(a->ItemMember(2)->String(), "x y");

  ASSERT_TRUE(list.BuildFromString("P{\"a\\\"b\"}"));  // a backslash and the quote it protects stay
  EXPECT_STREQ(list.Item(0u)->ItemMember(0)->String(), "a\\\"b");

  ASSERT_TRUE(list.BuildFromString("Frame{Point{1,true},false}"));
  CMember* nested = list.Item(0u)->ItemMember(0);
  EXPECT_TRUE(nested->IsStructure());
  EXPECT_STREQ(nested->Structure().GetIdf(), "Point");
  EXPECT_TRUE(nested->Structure().ItemMember(1)->Boolean());
  EXPECT_EQ(list.Item(0u)->ItemMember(1)->GetType(), MT_BOOLEAN);

  EXPECT_EQ(Rewrite("A{1};B{true};"), "A{1};B{true}");
  EXPECT_EQ(Rewrite("A{1};B{true}"), "A{1};B{true}");
  EXPECT_EQ(Rewrite("  a-b_c9 { 007 , 1.05 , 5. , tree{ \"\" } } ;  "), "a-b_c9{007,1,5,tree{\"\"}}");
  EXPECT_EQ(Rewrite("S{\"tab\there\"}"), "S{\"tab\\there\"}");  // a TAB in a string reads as \t
  EXPECT_EQ(Rewrite("A{.,1}"), "A{,1}");  // a lone point is a real with an empty text
}

TEST(Structures, RefusedTexts) {
  for (const char* text : {"", " ", "A{1} B{2}", "A{-1}", "A{}", "A{1", "A{1,}", "{1}", "1A{1}", "A_{1}",
                           "A-{1}", "_A{1}", "A{1.2.3}", "A{\"open}", "A{x}", "A{true{1}}", "A{1};;",
                           "A{1}\n", "A{1},B{2}", "A{1}\\", "A{\"x\"\\", "A{truefalse}", "A\t{1}"}) {
    CLstStructures list;
    list.Add("kept?");
    EXPECT_FALSE(list.BuildFromString(text)) << text;
    EXPECT_EQ(list.GetCount(), 0u) << text;
  }
}

TEST(Structures, NestingIsBounded) {
  std::string deep;
  for (int i = 0; i < 150; ++i) deep += "N{";
  deep += "1";
  for (int i = 0; i < 150; ++i) deep += "}";
  EXPECT_EQ(Rewrite(deep), deep);
  std::string tooDeep;
  for (int i = 0; i < 100000; ++i) tooDeep += "N{";
  EXPECT_EQ(Rewrite(tooDeep), "<refused>");
}

}  // namespace
