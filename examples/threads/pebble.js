// Shows the threads of the kernel Pebble. A debugger would read the kernel's tables from the target; this
// example carries a picture of them.
load("pebble_tables.js");

var states = ["running", "ready", "sleeping", "waiting"];

function addThreads(title, wanted) {
    Threads.newqueue(title);
    for (var i = 0; i < threads.length; i++) {
        var thread = threads[i];
        if (wanted(thread)) Threads.add(thread.id, thread.name, thread.priority, states[thread.state], thread.id);
    }
}

function init() {
    Threads.clear();
    Threads.setColumns("Id", "Name", "Priority", "State");
    Threads.setSortByNumber("Priority");
    addThreads("Ready", function (thread) { return thread.state < 2; });
    addThreads("Blocked", function (thread) { return thread.state >= 2; });
    Threads.setColumns2("Timers", "Name", "Expires");
    if (Threads.shown("Timers")) {
        Threads.newqueue2("Timers", "Running");
        for (var i = 0; i < timers.length; i++) Threads.add2("Timers", timers[i].name, timers[i].expires);
    }
}

// The registers that the kernel saved on the stack of a thread.
function getregs(id) {
    for (var i = 0; i < threads.length; i++)
        if (threads[i].id == id) return threads[i].registers;
}
