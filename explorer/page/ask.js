// What is asked of a worker of its own, which ends with its answer: the page goes on meanwhile.

// `newWorker` gives a worker, `message` has it open the picture; `hear` has `done` and `progress`.
export function ask(newWorker, message, request, hear) {
    const worker = newWorker();
    const end = (answer) => {
        worker.terminate();
        hear.done(answer);
    };
    const heard = {
        ready() {
            worker.postMessage({ type: "open", picture: 0, ...message });
            worker.postMessage({ type: request });
        },
        progress: ({ part }) => hear.progress(part),
        answer: end,
        refused: ({ text }) => end({ refusal: text }),
    };
    worker.onmessage = ({ data }) => heard[data.type]?.(data);
    worker.onerror = ({ message: text }) => end({ refusal: text });
    return worker;
}
