#pragma once

#include <gtest/gtest.h>

#include <string>

/// Names the rows of a data-driven test by their member `name`.
struct ByName
{
    template <class Row>
    std::string operator()(const ::testing::TestParamInfo<Row> &row) const
    {
        return row.param.name;
    }
};
