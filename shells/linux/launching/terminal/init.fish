# What a fish that is to take over a text runs after the user's own configuration: the text, with
# job control, so that Ctrl-C ends the command and not the shell.
set -l __kestrel_text (command cat $KESTREL_LAUNCH_DIR/cmd | string collect --no-trim-newlines --allow-empty)
command rm -f $KESTREL_LAUNCH_DIR/{run,cmd,bashrc,.zshenv,init.fish}
command rmdir $KESTREL_LAUNCH_DIR
set -e KESTREL_LAUNCH_DIR
printf '> %s\n' $__kestrel_text
status job-control full
eval $__kestrel_text
status job-control interactive
