#include "document/TreeQueries.h"

#include <gtest/gtest.h>

TEST(DocTree, Placeholder) { EXPECT_TRUE(true); }
