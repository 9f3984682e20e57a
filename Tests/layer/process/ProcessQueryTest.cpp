#include <sys/sysctl.h>

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Query {
    int result = 0;
    size_t length = sizeof(kinfo_proc);
    kinfo_proc record{};
};

Query ask(int pid) {
    int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, pid};
    Query query;
    query.result = sysctl(name, 4, &query.record, &query.length, nullptr, 0);
    return query;
}

TEST(ProcessQuery, TellsTheParentOfThisProcess) {
    const Query query = ask(getpid());
    EXPECT_EQ(query.result, 0);
    EXPECT_EQ(query.length, sizeof(kinfo_proc));
    EXPECT_EQ(query.record.kp_proc.p_pid, getpid());
    EXPECT_EQ(query.record.kp_eproc.e_ppid, getppid());
}

TEST(ProcessQuery, TellsTheParentOfAProcessWhoseNameHoldsBracketsAndBlanks) {
    int named[2];
    ASSERT_EQ(pipe(named), 0);
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_NAME, "a) S 1 (b");
        (void)!write(named[1], "x", 1);
        pause();
        _exit(0);
    }
    char ready = 0;
    ASSERT_EQ(read(named[0], &ready, 1), 1);
    EXPECT_EQ(ask(child).record.kp_eproc.e_ppid, getpid());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(named[0]);
    close(named[1]);
}

TEST(ProcessQuery, AnswersAnUnknownProcessWithAnEmptyRecord) {
    const pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    for (const int pid : {gone, 0, -1}) {
        const Query query = ask(pid);
        EXPECT_EQ(query.result, 0) << pid;
        EXPECT_EQ(query.length, 0U) << pid;
    }
}

TEST(ProcessQuery, KnowsTheFirstProcess) {
    const Query query = ask(1);
    EXPECT_EQ(query.length, sizeof(kinfo_proc));
    EXPECT_EQ(query.record.kp_eproc.e_ppid, 0);
}

TEST(ProcessQuery, RefusesEveryOtherQuery) {
    kinfo_proc record{};
    size_t length = sizeof record;
    int other[] = {CTL_KERN, KERN_PROC, 7, getpid()};
    EXPECT_EQ(sysctl(other, 4, &record, &length, nullptr, 0), -1);
    EXPECT_EQ(errno, ENOENT);
    int shorter[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, getpid()};
    EXPECT_EQ(sysctl(shorter, 3, &record, &length, nullptr, 0), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST(ProcessQuery, RefusesABufferThatIsTooSmall) {
    int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, getpid()};
    kinfo_proc record{};
    size_t length = sizeof record - 1;
    EXPECT_EQ(sysctl(name, 4, &record, &length, nullptr, 0), -1);
    EXPECT_EQ(errno, ENOMEM);
    EXPECT_EQ(record.kp_proc.p_pid, 0);
}

} // namespace
