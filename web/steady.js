// A copy of the app's canvas that keeps its size: what films are made of.
// Encoders of the browsers spoil a film whose pictures change their size, as they do when a phone is turned.

const canvas = document.getElementById('screen');

/** Starts copying each frame; answers the copy, and what ends it. */
export function steadyCopy() {
    const copy = document.createElement('canvas');
    [copy.width, copy.height] = [canvas.width, canvas.height];
    const context = copy.getContext('2d', {alpha: false});
    let timer = 0;
    let next = 0;

    function draw() {
        next = requestAnimationFrame(draw);
        const scale = Math.min(copy.width / canvas.width, copy.height / canvas.height);
        const [width, height] = [canvas.width * scale, canvas.height * scale];
        context.fillRect(0, 0, copy.width, copy.height);
        context.drawImage(canvas, (copy.width - width) / 2, (copy.height - height) / 2, width, height);
    }

    function stop() {
        clearTimeout(timer);
        cancelAnimationFrame(next);
    }

    // The app's picture lasts from its frame until it is shown. Who asks last for frames is called last, and the app
    // asks anew when it was not seen or had lost its context.
    function follow() {
        stop();
        timer = setTimeout(() => { next = requestAnimationFrame(draw); });
    }

    document.addEventListener('visibilitychange', follow);
    canvas.addEventListener('webglcontextrestored', follow);
    follow();
    return {
        copy,
        end() {
            stop();
            document.removeEventListener('visibilitychange', follow);
            canvas.removeEventListener('webglcontextrestored', follow);
        },
    };
}
