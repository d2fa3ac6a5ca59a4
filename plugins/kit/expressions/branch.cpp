// "if" with a condition that is a truth value.
#include "kit/expressions/leaves.h"
#include "kit/expressions/number_forms.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrane_kit {

namespace {

std::optional<DataType> TypeOfBranches(const Expressions& arguments) {
    return arguments.size() < 3 ? arguments[1]->Type() : CommonType(arguments[1]->Type(), arguments[2]->Type());
}

class Branch final : public Expression {
public:
    explicit Branch(Expressions arguments)
        : Expression(TypeOfBranches(arguments)), fCondition(std::move(arguments[0])),
          fBranches{std::move(arguments[1]), arguments.size() < 3 ? nullptr : std::move(arguments[2])} {
        DependOn(*fCondition);
        for (const ExpressionPtr& branch : fBranches) {
            if (branch != nullptr) {
                DependOn(*branch);
                fCostOfBranches += branch->Cost();
            }
        }
    }

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override {
        const Expression* branch = Choose(fCondition.Number(frame));
        return branch == nullptr ? NoBranch() : AsCommon(branch->Evaluate(frame), Type());
    }
    double Number(Frame& frame) const override {
        const Expression* branch = Choose(fCondition.Number(frame));
        return branch == nullptr ? kMissing : branch->Number(frame);
    }
    bool PassesFieldOn() const override {
        return std::any_of(fBranches.begin(), fBranches.end(),
                           [](const ExpressionPtr& branch) { return branch != nullptr && branch->PassesFieldOn(); });
    }

protected:
    Column ComputeColumn(Block& block) const override;
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    /// The rows that take one branch: their places among the chosen ones, and in the block.
    struct Part {
        std::uint32_t* places;
        std::uint32_t* rows;
        std::size_t count = 0;
    };

    const Expression* Choose(double truth) const {
        return std::isnan(truth) ? nullptr : fBranches[truth != 0.0 ? 0 : 1].get();
    }
    Value NoBranch() const { return MakeNumber(kMissing, Type().value_or(DataType::DOUBLE)); }
    Part Take(Block& block, const NumberColumn& truths, const Expression* branch) const;
    void BlendNumbers(Block& block, const NumberColumn& truths, double* results) const;

    Operand fCondition;
    std::array<ExpressionPtr, 2> fBranches;
    std::size_t fCostOfBranches = 0;
};

Branch::Part Branch::Take(Block& block, const NumberColumn& truths, const Expression* branch) const {
    Part part{block.Places().Take(), block.Places().Take()};
    for (std::size_t i = 0; i < block.Count(); ++i) {
        part.places[part.count] = static_cast<std::uint32_t>(i);
        part.rows[part.count] = block.RowAt(i);
        part.count += Choose(truths.At(i)) == branch ? 1 : 0;
    }
    return part;
}

Column Branch::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    const NumberColumn truths = fCondition.Numbers(block);
    for (const Expression* branch : {static_cast<const Expression*>(nullptr), fBranches[0].get(), fBranches[1].get()}) {
        const Block::Scratch inner(block);
        const Part part = Take(block, truths, branch);
        if (part.count == 0) {
            continue;
        }
        const Block::Choice choice(block, part.rows, part.count);
        Column column;
        if (branch != nullptr) {
            column = branch->Evaluate(block);
        }
        for (std::size_t i = 0; i < part.count; ++i) {
            builder.Set(part.places[i], branch == nullptr ? NoBranch() : AsCommon(column.At(i), Type()));
        }
    }
    return builder.Get();
}

/// Cheap branches are computed for all rows, which costs less than to tell the rows apart.
NumberColumn Branch::ComputeNumbers(Block& block) const {
    double* const results = block.Numbers().Take();
    const Block::Scratch scratch(block);
    const NumberColumn truths = fCondition.Numbers(block);
    if (fCostOfBranches <= kCheap) {
        BlendNumbers(block, truths, results);
        return NumberColumn::Own(results);
    }
    std::fill(results, results + block.Count(), kMissing);
    for (const ExpressionPtr& branch : fBranches) {
        const Block::Scratch inner(block);
        const Part part = branch == nullptr ? Part{} : Take(block, truths, branch.get());
        if (part.count == 0) {
            continue;
        }
        const Block::Choice choice(block, part.rows, part.count);
        const NumberColumn numbers = branch->Numbers(block);
        for (std::size_t i = 0; i < part.count; ++i) {
            results[part.places[i]] = numbers.At(i);
        }
    }
    return NumberColumn::Own(results);
}

void Branch::BlendNumbers(Block& block, const NumberColumn& truths, double* results) const {
    const NumberColumn yes = fBranches[0]->Numbers(block);
    const NumberColumn no = fBranches[1] == nullptr ? NumberColumn::Of(kMissing) : fBranches[1]->Numbers(block);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        const double truth = truths.At(i);
        const double taken = truth != 0.0 ? yes.At(i) : no.At(i);
        results[i] = std::isnan(truth) ? kMissing : taken;
    }
}

} // namespace

ExpressionPtr MakeBranch(Expressions& arguments) {
    return arguments[0]->IsOf(DataType::BOOLEAN) ? std::make_unique<Branch>(std::move(arguments)) : nullptr;
}

} // namespace veltrane_kit
