#include "support/DbTest.h"
#include <QElapsedTimer>
#include <QSqlQuery>
#include <optional>

using namespace testing_support;

namespace {

// Runs of Get Next and Get Previous inside one action, which the engine serves
// from rows it read ahead, against the same reads one action each.
class ReadAheadTest : public DbTest, public testing_support::OnEachEngine {
protected:
    void seed() override
    {
        ASSERT_TRUE(connect());
        // Descriptions that repeat, and differ in case and accents only, and
        // Item IDs that repeat: a one-segment key skips repeated values.
        const char *descriptions[] = {"apple", "APPLE", "\u00c9clair", "eclair", "Fig", "pear"};
        for (int i = 1; i <= 60; ++i)
            ASSERT_TRUE(insert(descriptions[i % 6], QString("%1").arg(i * 10, 8, 10, QChar('0')),
                               QString("ID%1").arg(i % 7), i));
    }
    bool read(qint16 op, qint16 key, QString *sql = nullptr)
    {
        QString s;
        const bool found = gfbDBSM_Record(0, op, key, false, false, s);
        if (sql)
            *sql = s;
        return found;
    }
    // Walks the key to its end: the S/L and statement of each call.
    QStringList walk(qint16 key, bool previous, bool oneAction)
    {
        QStringList seen;
        std::optional<DbAction> whole, each;
        if (oneAction)
            whole.emplace();
        bool found = true;
        for (qint16 op = previous ? opLast : opFirst; found && seen.size() < 200;
             op = previous ? opPrevious : opNext) {
            if (!oneAction)
                each.emplace();
            QString sql;
            found = read(op, key, &sql);
            seen << (found ? gItem.SL : QString("end")) + ' ' + sql;
        }
        return seen;
    }
};

} // namespace

TEST_P(ReadAheadTest, ARunGivesTheRowsAndStatementsOfOneReadPerAction)
{
    for (const qint16 key : {1, 2, 3}) {
        for (const bool previous : {false, true}) {
            const QStringList alone = walk(key, previous, false);
            EXPECT_GT(alone.size(), key == 2 ? 7 : 60);
            EXPECT_EQ(walk(key, previous, true), alone) << key << previous;
        }
    }
}

TEST_P(ReadAheadTest, AChangeBetweenTwoActionsOrThroughTheEngineIsSeenByTheNextRead)
{
    const struct {
        const char *change, *undo, *sl;
        int qty;
    } cases[] = {
        {"INSERT INTO items VALUES ('NEW', '00000045', '', 99)",
         "DELETE FROM items WHERE SL = '00000045'", "00000045", 99},
        {"UPDATE items SET Qty = 99 WHERE SL = '00000050'",
         "UPDATE items SET Qty = 5 WHERE SL = '00000050'", "00000050", 99},
        {"DELETE FROM items WHERE SL = '00000050'",
         "INSERT INTO items VALUES ('pear', '00000050', 'ID5', 5)", "00000060", 6},
    };
    for (const bool elsewhere : {true, false}) {
        for (const auto &c : cases) {
            std::optional<DbAction> action(std::in_place);
            ASSERT_TRUE(read(opFirst, 1));
            for (int i = 0; i < 3; ++i) ASSERT_TRUE(read(opNext, 1)); // rows to 00000040 and beyond
            ASSERT_EQ(gItem.SL, "00000040");
            if (elsewhere) {
                action.reset();
                ASSERT_TRUE(QSqlQuery(anotherStation()->db()).exec(c.change));
                action.emplace();
            } else {
                EXPECT_GE(glDBSM_Execute(c.change), 0);
            }
            ASSERT_TRUE(read(opNext, 1));
            EXPECT_EQ(gItem.SL, c.sl) << c.change << (elsewhere ? " by another station" : "");
            EXPECT_EQ(gItem.Qty, c.qty);
            action.reset();
            EXPECT_EQ(glDBSM_Execute(c.undo), 1);
        }
    }
}

TEST_P(ReadAheadTest, AFailedReadKeepsTheBufferAndTheNextActionGoesOnFromIt)
{
    const std::unique_ptr<DbEngine> station = anotherStation();
    QSqlQuery lock(station->db());
    QElapsedTimer clock;
    {
        const DbAction action;
        ASSERT_TRUE(read(opFirst, 1));
        ASSERT_TRUE(read(opNext, 1));
        // The run's next read is the one that reads ahead: another station holds the table.
        ASSERT_TRUE(lock.exec(testOnPostgres() ? "BEGIN" : "BEGIN EXCLUSIVE"));
        if (testOnPostgres()) {
            ASSERT_TRUE(lock.exec("LOCK TABLE items IN ACCESS EXCLUSIVE MODE"));
        }
        clock.start();
        EXPECT_FALSE(read(opNext, 1));
        EXPECT_TRUE(gfbDBSM_ActionFailed());
        EXPECT_FALSE(read(opNext, 1)) << "the rest of the action does not wait again";
        EXPECT_FALSE(read(opFirst, 1));
        EXPECT_EQ(gItem.SL, "00000020");
        EXPECT_TRUE(boxes().isEmpty()) << "the box comes when the action ends";
    }
    EXPECT_LT(clock.elapsed(), 2 * kLockWaitMs) << "one bounded wait for the whole action";
    EXPECT_EQ(boxTexts(), QStringList({testing_support::kBusyBox}));
    const QList<QByteArray> log = readDataFile("PVSW.log").split('\n');
    ASSERT_EQ(log.size(), 3) << "two lines for the one statement that reached the database";
    EXPECT_TRUE(
        log[0].contains(" [EXE FAIL]" + QByteArray::number(kErrProvider) + " Description: "));
    EXPECT_TRUE(log[1].startsWith("SELECT  TOP 1 * FROM items WHERE SL>'00000020"))
        << "the log shows the call's own statement";
    ASSERT_TRUE(lock.exec("COMMIT"));
    const DbAction again;
    for (const char *sl : {"00000030", "00000040", "00000050"}) {
        ASSERT_TRUE(read(opNext, 1));
        EXPECT_EQ(gItem.SL, sl);
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, ReadAheadTest, testing_support::kEachEngine,
                         testing_support::engineName);
