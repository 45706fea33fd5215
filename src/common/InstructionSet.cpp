#include "common/InstructionSet.h"

#include <QDebug>

#include <atomic>

namespace {

constexpr const char* names[] = {"sse2", "avx2", "avx512"};

InstructionSet chosenAtStart()
{
    const QVector<InstructionSet> sets = instructionSets();
    const QByteArray asked = qgetenv("MORVENKITE_ISA");
    if (asked.isEmpty())
        return sets.last();
    for (const InstructionSet set : sets) {
        if (asked == nameOf(set))
            return set;
    }
    qDebug().noquote() << "MORVENKITE_ISA" << asked
                       << "is no instruction set of this machine:" << nameOf(sets.last())
                       << "is used";
    return sets.last();
}

std::atomic<InstructionSet>& chosen()
{
    static std::atomic<InstructionSet> set(chosenAtStart());
    return set;
}

} // namespace

QVector<InstructionSet> instructionSets()
{
    QVector<InstructionSet> sets{InstructionSet::Sse2};
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2"))
        sets.append(InstructionSet::Avx2);
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw"))
        sets.append(InstructionSet::Avx512);
#endif
    return sets;
}

InstructionSet instructionSet()
{
    return chosen();
}

void useInstructionSet(InstructionSet set)
{
    if (instructionSets().contains(set))
        chosen() = set;
}

const char* nameOf(InstructionSet set)
{
    return names[int(set)];
}
