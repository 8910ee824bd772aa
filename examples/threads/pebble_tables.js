var threads = [
    {id: 1, name: "idle", priority: 255, state: 1, registers: [0, 0, 0x20000100]},
    {id: 2, name: "main", priority: 16, state: 0, registers: []},
    {id: 3, name: "display", priority: 32, state: 2, registers: [1, 2, 0x20000480]},
    {id: 4, name: "radio", priority: 8, state: 3, registers: [7, 0, 0x20000640]},
    {id: 5, name: "logger", priority: 64, state: 1, registers: [0, 9, 0x20000800]}
];
var timers = [
    {name: "blink", expires: 250},
    {name: "watchdog", expires: 1000}
];
